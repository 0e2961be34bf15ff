#include "base/lost_pages.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace orin::base {

namespace {

/// A range is live while `end` is not 0.
struct Entry {
  std::atomic<uintptr_t> begin;
  std::atomic<uintptr_t> end;
  std::atomic<bool> has_lost_page;
};
static_assert(std::atomic<uintptr_t>::is_always_lock_free);

// A signal handler is handed nothing but the address, so that what it looks up has to be where
// it can find it without a lock and without an allocation.
std::array<Entry, GuardedRange::kMost> live_ranges;
struct sigaction earlier_action;
uintptr_t page_size;

Entry* FindLive(uintptr_t address) {
  for (Entry& entry : live_ranges) {
    if (address < entry.end && address >= entry.begin) return &entry;
  }
  return nullptr;
}

void HandAcross(int signal, siginfo_t* about, void* context) {
  if ((earlier_action.sa_flags & SA_SIGINFO) != 0) {
    return earlier_action.sa_sigaction(signal, about, context);
  }
  if (earlier_action.sa_handler != SIG_DFL && earlier_action.sa_handler != SIG_IGN) {
    return earlier_action.sa_handler(signal);
  }
  // The access is made again and ends the program as it would have done without this handler.
  sigaction(signal, &earlier_action, nullptr);
}

/// Only calls that may be made in a handler: memory is given by the kernel alone.
void PutZerosForPage(int signal, siginfo_t* about, void* context) {
  const int number = errno;
  const auto address = reinterpret_cast<uintptr_t>(about->si_addr);
  Entry* entry = FindLive(address);
  void* page = reinterpret_cast<void*>(address & ~(page_size - 1));
  if (entry == nullptr || mmap(page, page_size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED,
                               -1, 0) == MAP_FAILED) {
    return HandAcross(signal, about, context);
  }
  entry->has_lost_page = true;
  errno = number;
}

bool Install() {
  page_size = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  struct sigaction action = {};
  action.sa_sigaction = PutZerosForPage;
  action.sa_flags = SA_SIGINFO | SA_RESTART;
  sigemptyset(&action.sa_mask);
  return sigaction(SIGBUS, &action, &earlier_action) == 0;
}

}  // namespace

GuardedRange::GuardedRange(const void* data, size_t size) {
  static const bool is_installed = Install();
  if (!is_installed) return;
  for (size_t i = 0; i < live_ranges.size(); ++i) {
    Entry& entry = live_ranges[i];
    if (entry.end != 0) continue;
    entry.has_lost_page = false;
    entry.begin = reinterpret_cast<uintptr_t>(data);
    entry.end = entry.begin + size;
    entry_ = i;
    return;
  }
}

GuardedRange::GuardedRange(GuardedRange&& other) noexcept
    : entry_(std::exchange(other.entry_, kNoEntry)) {}

GuardedRange& GuardedRange::operator=(GuardedRange&& other) noexcept {
  std::swap(entry_, other.entry_);
  return *this;
}

GuardedRange::~GuardedRange() {
  if (IsGuarded()) live_ranges[entry_].end = 0;
}

bool GuardedRange::HasLostPage() const { return IsGuarded() && live_ranges[entry_].has_lost_page; }

}  // namespace orin::base
