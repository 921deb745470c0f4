#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace vexroc {

/// Bytes of an input, front to back, once.
class ByteSource {
public:
    explicit ByteSource(std::string name) : name_(std::move(name)) {}
    virtual ~ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// Fills the front of the block and says how far; 0 at the end. Throws an input error when reading fails.
    virtual std::size_t read(std::span<char> block) = 0;
    /// How much of the input is read, 0 to 1; none where its length is not known.
    [[nodiscard]] virtual std::optional<double> shareRead() const noexcept { return std::nullopt; }
    /// How messages call the input.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

private:
    std::string name_;
};

} // namespace vexroc
