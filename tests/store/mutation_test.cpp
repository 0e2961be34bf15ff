#include <gtest/gtest.h>

#include "support/mutation/mutation_run.h"

namespace orin::support {
namespace {

constexpr uint64_t kSeed = 20200106;
constexpr uint64_t kRounds = 250;

/// Four parts of a thousand rounds, so that they run side by side.
class Mutation : public ::testing::TestWithParam<uint64_t> {};

TEST_P(Mutation, NoDamageMakesAWriterLoseABarOrIsOverlooked) {
  MutationRun run(kSeed);
  const uint64_t first = GetParam() * kRounds;
  for (uint64_t number = first; number < first + kRounds; ++number) {
    for (const Round& round : run.RunOne(number)) {
      for (const std::string& fault : round.faults) {
        ADD_FAILURE() << "orin-mutate 1 " << kSeed << ' ' << number << ": " << round.damage << "; "
                      << round.user << ": " << fault;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Part, Mutation, ::testing::Range<uint64_t>(0, 4));

}  // namespace
}  // namespace orin::support
