#include "tests/support/failingAllocator.h"

#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

namespace roctest::allocator {
namespace {

constexpr long never = std::numeric_limits<long>::max();
long untilFailure = never;

} // namespace

long alive = 0;

void failAt(long point) noexcept { untilFailure = point; }

bool stopFailing() noexcept { return std::exchange(untilFailure, never) < 0; }

} // namespace roctest::allocator

using namespace roctest::allocator;

void* operator new(std::size_t size)
{
    const bool fails = untilFailure != never && untilFailure-- == 0;
    void* const memory = fails ? nullptr : std::malloc(size > 0 ? size : 1);
    if (memory == nullptr)
        throw std::bad_alloc();
    ++alive;
    return memory;
}

void operator delete(void* memory) noexcept
{
    alive -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
