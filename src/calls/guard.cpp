#include "calls/guard.h"

#include <charconv>
#include <new>

namespace ROCALG_920::calls {

namespace {

// A buffer of its own: to keep an error, a text that allocates could itself fail.
thread_local char lastError[4096] = "";

} // namespace

int fail(vexroc_result result, const char* message) noexcept
{
    const std::size_t length = std::min(std::strlen(message), sizeof lastError - 1);
    std::memcpy(lastError, message, length);
    lastError[length] = '\0';
    return result;
}

int failWithException() noexcept
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return fail(VEXROC_NO_MEMORY, "not enough memory");
    } catch (const InvalidArgument& error) {
        return fail(VEXROC_INVALID, error.what());
    } catch (const std::exception& error) {
        return fail(VEXROC_FAILED, error.what());
    } catch (...) {
        return fail(VEXROC_FAILED, "an unknown exception");
    }
}

std::string shortest(double value)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

} // namespace ROCALG_920::calls

const char* vexroc_last_error(void) { return ROCALG_920::calls::lastError; }
