#pragma once

#include "cli/input/ByteSource.h"

#include <algorithm>
#include <string>

namespace vexroc {

/// Gives the text in pieces of a fixed size, so that everything meets a block's end somewhere.
class Pieces final : public ByteSource {
public:
    Pieces(std::string text, std::size_t size) : ByteSource("data.csv"), text_(std::move(text)), size_(size) {}

    std::size_t read(std::span<char> block) override
    {
        const std::size_t length = text_.copy(block.data(), std::min(size_, block.size()), next_);
        next_ += length;
        return length;
    }

private:
    std::string text_;
    std::size_t size_;
    std::size_t next_ = 0;
};

} // namespace vexroc
