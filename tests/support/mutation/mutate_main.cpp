// orin-mutate COUNT SEED [FIRST]: damages a store COUNT times and lets all readers and writers use
// it. Prints what does not hold, with the number that repeats it; ends with 1 where there is any.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "support/mutation/mutation_run.h"

namespace {

uint64_t Run(uint64_t count, uint64_t seed, uint64_t first) {
  orin::support::MutationRun run(seed);
  uint64_t faults = 0;
  for (uint64_t number = first; number < first + count; ++number) {
    for (const orin::support::Round& round : run.RunAll(number)) {
      for (const std::string& fault : round.faults) {
        std::cout << number << '\t' << round.damage << '\t' << round.user << '\t' << fault << '\n';
        ++faults;
      }
    }
  }
  return faults;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "orin-mutate COUNT SEED [FIRST]\n";
    return 2;
  }
  try {
    const uint64_t count = std::stoull(argv[1]);
    const uint64_t faults = Run(count, std::stoull(argv[2]), argc > 3 ? std::stoull(argv[3]) : 0);
    std::cout << count << " stores damaged, " << faults << " faults\n";
    return faults == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 2;
  }
}
