#pragma once

#include "cli/input/ByteSource.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// A source and what was read of it to see what it is.
class LookedAtSource final : public ByteSource {
public:
    /// Looks at so many bytes, or at all when there are fewer.
    LookedAtSource(std::unique_ptr<ByteSource> source, std::size_t length)
        : ByteSource(source->name()), source_(std::move(source))
    {
        // A pipe may give bytes one by one.
        std::vector<char> bytes(length);
        for (std::size_t read = length; read > 0 && front_.size() < length;) {
            read = source_->read(std::span(bytes).first(length - front_.size()));
            front_.append(bytes.data(), read);
        }
    }

    [[nodiscard]] std::string_view front() const noexcept { return front_; }
    std::size_t read(std::span<char> block) override
    {
        if (front_.empty())
            return source_->read(block);
        const std::size_t length = front_.copy(block.data(), block.size());
        front_.erase(0, length);
        return length;
    }
    [[nodiscard]] std::optional<double> shareRead() const noexcept override { return source_->shareRead(); }

private:
    std::unique_ptr<ByteSource> source_;
    std::string front_;
};

} // namespace vexroc
