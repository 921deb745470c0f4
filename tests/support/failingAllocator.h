#pragma once

/// The allocator of a program that has failingAllocator.cpp among its sources, for arrays too: counts what is alive and
/// fails one allocation on request.
namespace roctest::allocator {

extern long alive;

/// Lets the allocation with this number fail, from 0, counted from now on.
void failAt(long point) noexcept;
/// No allocation fails any more. Was the one to fail reached?
bool stopFailing() noexcept;

} // namespace roctest::allocator
