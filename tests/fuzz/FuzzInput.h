#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/// What the fuzz targets share. A target is the function that libFuzzer calls; the replay of the kept corpus calls it
/// too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace roctest {

/// Reads values off the bytes of an input; zeros once they are used up.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : next_(data), left_(size) {}

    [[nodiscard]] std::size_t left() const noexcept { return left_; }
    template <class Value>
    Value take()
    {
        Value value{};
        const std::size_t length = left_ < sizeof value ? left_ : sizeof value;
        std::memcpy(&value, next_, length);
        advance(length);
        return value;
    }
    std::uint8_t byte() { return take<std::uint8_t>(); }
    /// In [0, limit).
    int below(int limit) { return byte() % limit; }
    bool coin() { return (byte() & 1) != 0; }
    template <class List>
    auto& oneOf(List& list)
    {
        return list[byte() % std::size(list)];
    }
    /// Text up to a zero byte, the end, or so many bytes.
    std::string text(std::size_t longest)
    {
        std::string result;
        while (left_ > 0 && result.size() < longest)
            if (const char c = static_cast<char>(byte()); c != '\0')
                result += c;
            else
                break;
        return result;
    }
    std::string rest()
    {
        std::string result(reinterpret_cast<const char*>(next_), left_);
        advance(left_);
        return result;
    }

private:
    void advance(std::size_t length)
    {
        next_ += length;
        left_ -= length;
    }
    const std::uint8_t* next_;
    std::size_t left_;
};

/// Ends the program unless the finding is empty: that is how a fuzzer hears of it.
inline void requireNone(const std::string& finding)
{
    if (finding.empty())
        return;
    std::fprintf(stderr, "%s\n", finding.c_str());
    std::abort();
}

inline void require(bool holds, const char* what) { requireNone(holds ? "" : what); }

} // namespace roctest
