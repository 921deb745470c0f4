#pragma once

#include "vexrocproc/analysis.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

/// What every call of the C headers needs: arguments that are checked, errors that are told in words, results that fit
/// the caller's structures.
namespace ROCALG_920::calls {

/// An argument or a setting that cannot be; says which.
class InvalidArgument : public std::invalid_argument {
public:
    using invalid_argument::invalid_argument;
};

/// Keeps the message for vexroc_last_error, cut to what its place holds, and returns the result.
int fail(vexroc_result result, const char* message) noexcept;
/// The result for the exception that is being handled; keeps its message.
int failWithException() noexcept;

/// Runs a call's work and turns what it throws into a result.
template <class Work>
int guarded(Work&& work) noexcept
{
    try {
        return std::forward<Work>(work)();
    } catch (...) {
        return failWithException();
    }
}

/// The same for calls that answer with a value: what they answer where there is none.
template <class Value, class Work>
Value guardedOr(Value otherwise, Work&& work) noexcept
{
    try {
        return std::forward<Work>(work)();
    } catch (...) {
        failWithException();
        return otherwise;
    }
}

/// The text in quotation marks, for messages.
std::string quoted(std::string_view text);

/// The number with the fewest digits that read back the same.
std::string shortest(double value);

/// What the pointer points at; throws with the name of the thing when there is none.
template <class T>
T& required(T* pointer, const char* what)
{
    if (pointer == nullptr)
        throw InvalidArgument(std::string(what) + " is null");
    return *pointer;
}

/// An element by a caller's index; throws with the number of elements when it is not there.
template <class List>
const auto& at(const List& list, int index, const char* what)
{
    if (index < 0 || static_cast<std::size_t>(index) >= list.size())
        throw InvalidArgument(std::string("no ") + what + ' ' + std::to_string(index) + "; there are "
                              + std::to_string(list.size()));
    return list[static_cast<std::size_t>(index)];
}

/// Copies as much of the result as the caller's structure, whose first member is its size, has room for.
template <class Result>
int deliver(const Result& result, Result* out)
{
    const std::size_t size = required(out, "the result structure").struct_size;
    if (size < sizeof(std::size_t))
        throw InvalidArgument("struct_size is not set: give it the sizeof of the structure");
    std::memcpy(static_cast<void*>(out), &result, std::min(size, sizeof result));
    out->struct_size = size;
    return VEXROC_OK;
}

/// For arrays and numbers that a caller may leave out: sets element `index`, unless there is no array.
template <class Element, class Value>
void put(Element* array, std::size_t index, const Value& value)
{
    if (array != nullptr)
        array[index] = static_cast<Element>(value);
}

} // namespace ROCALG_920::calls
