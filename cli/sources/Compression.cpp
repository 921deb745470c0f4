#include "cli/sources/Compression.h"

#include "cli/words/Failure.h"

#include <zlib.h>
#include <zstd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <string_view>
#include <vector>

namespace vexroc {

namespace {

constexpr std::size_t blockSize = std::size_t{128} << 10;

/// A source and what was read of it to see what it is.
class Front {
public:
    explicit Front(std::unique_ptr<ByteSource> source) : source_(std::move(source)), block_(blockSize) { fill(); }

    [[nodiscard]] const std::string& name() const noexcept { return source_->name(); }
    [[nodiscard]] std::optional<double> shareRead() const noexcept { return source_->shareRead(); }
    /// What is read and not yet taken; empty at the end only.
    std::string_view rest()
    {
        if (next_ == end_)
            fill();
        return {block_.data() + next_, end_ - next_};
    }
    void take(std::size_t length) noexcept { next_ += length; }
    /// Reads into the block, from what is there first.
    std::size_t read(std::span<char> block)
    {
        if (next_ == end_)
            return source_->read(block);
        const std::size_t length = rest().copy(block.data(), block.size());
        take(length);
        return length;
    }

private:
    /// At least the four bytes that tell gzip and zstd, if they are there: a pipe may give them one by one.
    void fill()
    {
        constexpr std::size_t magicLength = 4;
        next_ = end_ = 0;
        std::size_t length = 0;
        do {
            length = source_->read(std::span(block_).subspan(end_));
            end_ += length;
        } while (length > 0 && end_ < magicLength);
    }

    std::unique_ptr<ByteSource> source_;
    std::vector<char> block_;
    std::size_t next_ = 0;
    std::size_t end_ = 0;
};

class PlainSource final : public ByteSource {
public:
    explicit PlainSource(Front front) : ByteSource(front.name()), front_(std::move(front)) {}
    std::size_t read(std::span<char> block) override { return front_.read(block); }
    [[nodiscard]] std::optional<double> shareRead() const noexcept override { return front_.shareRead(); }

private:
    Front front_;
};

/// What the formats have in common: packed bytes in, blocks of unpacked bytes out.
class PackedSource : public ByteSource {
public:
    PackedSource(Front front, const char* format) : ByteSource(front.name()), front_(std::move(front)), format_(format)
    {
    }

    std::size_t read(std::span<char> block) final
    {
        std::size_t length = 0;
        while (length == 0) {
            const std::string_view packed = front_.rest();
            const Step step = unpack(packed, block);
            if (packed.empty() && step.made == 0) {
                if (!betweenParts())
                    throw fault("end too early: the file is cut off; copy or download it again");
                return 0;
            }
            front_.take(step.taken);
            length = step.made;
        }
        return length;
    }
    [[nodiscard]] std::optional<double> shareRead() const noexcept final { return front_.shareRead(); }

protected:
    struct Step {
        std::size_t taken;
        std::size_t made;
    };
    /// One call of the library. With no more packed bytes it may still have unpacked ones.
    virtual Step unpack(std::string_view packed, std::span<char> block) = 0;
    /// Is everything so far complete?
    [[nodiscard]] virtual bool betweenParts() const noexcept = 0;

    [[nodiscard]] Failure damaged(const std::string& reason) const
    {
        return fault("are damaged (" + reason + "); copy or download the file again");
    }

private:
    [[nodiscard]] Failure fault(const std::string& what) const
    {
        return inputError("cannot read " + name() + ": its " + format_ + " data " + what);
    }

    Front front_;
    const char* format_;
};

class GzipSource final : public PackedSource {
public:
    explicit GzipSource(Front front) : PackedSource(std::move(front), "gzip")
    {
        constexpr int gzipWindow = 16 + MAX_WBITS;
        if (inflateInit2(&stream_, gzipWindow) != Z_OK)
            throw std::bad_alloc();
    }
    ~GzipSource() override { inflateEnd(&stream_); }

private:
    Step unpack(std::string_view packed, std::span<char> block) override
    {
        if (betweenMembers_) {
            if (packed.empty())
                return {};
            if (packed.front() == '\0') // padding, as of tapes
                return {std::min(packed.find_first_not_of('\0'), packed.size()), 0};
            inflateReset(&stream_);
            betweenMembers_ = false;
        }
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data())); // zlib does not write there
        stream_.avail_in = static_cast<uInt>(packed.size());
        stream_.next_out = reinterpret_cast<Bytef*>(block.data());
        stream_.avail_out = static_cast<uInt>(block.size());
        const int answer = inflate(&stream_, Z_NO_FLUSH);
        if (answer == Z_MEM_ERROR)
            throw std::bad_alloc();
        betweenMembers_ = answer == Z_STREAM_END;
        if (answer != Z_OK && answer != Z_STREAM_END && answer != Z_BUF_ERROR) // the last: nothing to do this time
            throw damaged(stream_.msg ? stream_.msg : "not understood");
        return {packed.size() - stream_.avail_in, block.size() - stream_.avail_out};
    }
    [[nodiscard]] bool betweenParts() const noexcept override { return betweenMembers_; }

    z_stream stream_{};
    bool betweenMembers_ = false;
};

class ZstdSource final : public PackedSource {
public:
    explicit ZstdSource(Front front) : PackedSource(std::move(front), "zstd"), stream_(ZSTD_createDStream())
    {
        if (!stream_)
            throw std::bad_alloc();
    }

private:
    Step unpack(std::string_view packed, std::span<char> block) override
    {
        ZSTD_inBuffer in{packed.data(), packed.size(), 0};
        ZSTD_outBuffer out{block.data(), block.size(), 0};
        if (packed.empty() && frameDone_)
            return {};
        const std::size_t answer = ZSTD_decompressStream(stream_.get(), &out, &in);
        if (ZSTD_isError(answer))
            throw damaged(ZSTD_getErrorName(answer));
        frameDone_ = answer == 0;
        return {in.pos, out.pos};
    }
    [[nodiscard]] bool betweenParts() const noexcept override { return frameDone_; }

    struct Free {
        void operator()(ZSTD_DStream* stream) const noexcept { ZSTD_freeDStream(stream); }
    };
    std::unique_ptr<ZSTD_DStream, Free> stream_;
    bool frameDone_ = false;
};

bool isGzip(std::string_view front) { return front.starts_with("\x1F\x8B"); }

bool isZstd(std::string_view front)
{
    // A frame, or one of those to be skipped that some packers begin with.
    const bool skippable = front.size() >= 4 && (front[0] & 0xF0) == 0x50 && front.substr(1, 3) == "\x2A\x4D\x18";
    return front.starts_with("\x28\xB5\x2F\xFD") || skippable;
}

} // namespace

std::unique_ptr<ByteSource> decompressed(std::unique_ptr<ByteSource> source)
{
    Front front(std::move(source));
    if (isGzip(front.rest()))
        return std::make_unique<GzipSource>(std::move(front));
    if (isZstd(front.rest()))
        return std::make_unique<ZstdSource>(std::move(front));
    return std::make_unique<PlainSource>(std::move(front));
}

} // namespace vexroc
