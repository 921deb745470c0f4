#include "cli/sources/PackedSource.h"

#include "cli/sources/LookedAtSource.h"
#include "cli/system/Library.h"
#include "cli/words/Failure.h"

#include <archive.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <exception>
#include <new>
#include <string_view>
#include <vector>

namespace vexroc {

namespace {

constexpr std::size_t blockSize = std::size_t{128} << 10;
constexpr std::size_t longestMark = 6; ///< bytes that tell a format, at most

/// Packed bytes in, unpacked bytes out; and what may be wrong with them.
class PackedSource : public ByteSource {
public:
    PackedSource(std::unique_ptr<ByteSource> packed, const char* format)
        : ByteSource(packed->name()), packed_(std::move(packed)), format_(format), block_(blockSize)
    {
    }
    [[nodiscard]] std::optional<double> shareRead() const noexcept final { return packed_->shareRead(); }

protected:
    /// The next packed bytes; empty at the end.
    std::string_view nextPacked() { return {block_.data(), packed_->read(block_)}; }

    [[nodiscard]] Failure cutOff() const
    {
        return fault("end too early: the file is cut off; copy or download it again");
    }
    [[nodiscard]] Failure damaged(const std::string& reason) const
    {
        return fault("are damaged (" + reason + "); copy or download the file again");
    }

private:
    [[nodiscard]] Failure fault(const std::string& what) const
    {
        return inputError("cannot read " + name() + ": its " + format_ + " data " + what);
    }

    std::unique_ptr<ByteSource> packed_;
    const char* format_;
    std::vector<char> block_;
};

struct Zlib {
    Library library{"libz.so.1", "zlib1g", "reading text packed by gzip", inputError};
    decltype(&inflateInit2_) init = library["inflateInit2_"];
    decltype(&::inflate) inflate = library["inflate"];
    decltype(&inflateReset) reset = library["inflateReset"];
    decltype(&inflateEnd) end = library["inflateEnd"];
};

/// Through zlib, because libarchive 3.6 does not compare a gzip file's checksums: damaged data would pass for numbers.
class GzipSource final : public PackedSource {
public:
    explicit GzipSource(std::unique_ptr<ByteSource> packed) : PackedSource(std::move(packed), "gzip")
    {
        constexpr int gzipWindow = 16 + MAX_WBITS;
        if (zlib_.init(&stream_, gzipWindow, ZLIB_VERSION, static_cast<int>(sizeof stream_)) != Z_OK)
            throw std::bad_alloc();
    }
    ~GzipSource() override { zlib_.end(&stream_); }

    std::size_t read(std::span<char> block) override
    {
        for (;;) {
            const std::size_t made = unpackInto(block);
            if (made > 0)
                return made;
            if (stream_.avail_in == 0 && !refill()) {
                if (!betweenMembers_)
                    throw cutOff();
                return 0;
            }
        }
    }

private:
    /// Of one member, from the packed bytes at hand; how much it was. zlib may have more also when there are none.
    std::size_t unpackInto(std::span<char> block)
    {
        if (betweenMembers_ && !beginMember())
            return 0;
        stream_.next_out = reinterpret_cast<Bytef*>(block.data());
        stream_.avail_out = static_cast<uInt>(block.size());
        const int answer = zlib_.inflate(&stream_, Z_NO_FLUSH);
        if (answer == Z_MEM_ERROR)
            throw std::bad_alloc();
        betweenMembers_ = answer == Z_STREAM_END;
        if (answer != Z_OK && answer != Z_STREAM_END && answer != Z_BUF_ERROR) // the last: nothing to do this time
            throw damaged(stream_.msg ? stream_.msg : "not understood");
        return block.size() - stream_.avail_out;
    }

    /// Skips zero bytes; false when nothing else is at hand.
    bool beginMember()
    {
        for (; stream_.avail_in > 0 && *stream_.next_in == 0; ++stream_.next_in)
            --stream_.avail_in;
        if (stream_.avail_in == 0)
            return false;
        zlib_.reset(&stream_);
        betweenMembers_ = false;
        return true;
    }

    bool refill()
    {
        const std::string_view packed = nextPacked();
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data())); // zlib does not write there
        stream_.avail_in = static_cast<uInt>(packed.size());
        return !packed.empty();
    }

    Zlib zlib_;
    z_stream stream_{};
    bool betweenMembers_ = false;
};

struct LibArchive {
    Library library{"libarchive.so.13", "libarchive13", "reading text packed by zstd, xz or bzip2", inputError};
    decltype(&archive_read_new) create = library["archive_read_new"];
    decltype(&archive_read_append_filter) appendFilter = library["archive_read_append_filter"];
    decltype(&archive_read_support_format_raw) allowAnything = library["archive_read_support_format_raw"];
    decltype(&archive_read_support_format_empty) allowNothing = library["archive_read_support_format_empty"];
    decltype(&archive_read_open) open = library["archive_read_open"];
    decltype(&archive_read_next_header) nextHeader = library["archive_read_next_header"];
    decltype(&archive_read_data) readData = library["archive_read_data"];
    decltype(&archive_filter_bytes) filterBytes = library["archive_filter_bytes"];
    decltype(&archive_errno) errorNumber = library["archive_errno"];
    decltype(&archive_error_string) errorText = library["archive_error_string"];
    decltype(&archive_read_free) free = library["archive_read_free"];
};

class ArchiveSource final : public PackedSource {
public:
    ArchiveSource(std::unique_ptr<ByteSource> packed, const char* format, int filter)
        : PackedSource(std::move(packed), format), archive_(library_.create(), library_.free)
    {
        if (!archive_)
            throw std::bad_alloc();
        open(filter);
    }

    std::size_t read(std::span<char> block) override
    {
        const la_ssize_t length = isEmpty_ ? 0 : library_.readData(archive_.get(), block.data(), block.size());
        if (length < 0)
            throw failure();
        if (length == 0)
            requireNoOthersBehind();
        return static_cast<std::size_t>(length);
    }

private:
    void open(int filter)
    {
        archive* const opened = archive_.get();
        library_.appendFilter(opened, filter);
        library_.allowAnything(opened);
        library_.allowNothing(opened);
        // Data that cannot be unpacked look like none at all; only the error number tells.
        if (library_.open(opened, this, nullptr, givePacked, nullptr) != ARCHIVE_OK
            || library_.errorNumber(opened) != 0)
            throw failure();
        archive_entry* entry = nullptr;
        const int header = library_.nextHeader(opened, &entry);
        isEmpty_ = header == ARCHIVE_EOF;
        if (header != ARCHIVE_OK && !isEmpty_)
            throw failure();
    }

    static la_ssize_t givePacked(archive*, void* self, const void** bytes) noexcept
    {
        auto* const source = static_cast<ArchiveSource*>(self);
        try {
            const std::string_view packed = source->nextPacked();
            source->given_ += static_cast<la_int64_t>(packed.size());
            if (const std::size_t last = packed.find_last_not_of('\0'); last != std::string_view::npos)
                source->lastNotZero_ = source->given_ - static_cast<la_int64_t>(packed.size() - last - 1);
            *bytes = packed.data();
            return static_cast<la_ssize_t>(packed.size());
        } catch (...) {
            source->failure_ = std::current_exception();
            return ARCHIVE_FATAL;
        }
    }

    [[nodiscard]] Failure failure() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
        const char* const text = library_.errorText(archive_.get());
        const std::string reason = text != nullptr ? text : "not understood";
        const bool endsEarly = reason.find("runcated") != std::string::npos
            || reason.find("No progress is possible") != std::string::npos; // what xz calls it
        return endsEarly ? cutOff() : damaged(reason);
    }

    /// What libarchive does not know as another stream it leaves unread.
    void requireNoOthersBehind()
    {
        const void* bytes = nullptr;
        while (givePacked(archive_.get(), this, &bytes) > 0) {
        }
        if (failure_)
            std::rethrow_exception(failure_);
        if (lastNotZero_ > library_.filterBytes(archive_.get(), -1))
            throw damaged("other bytes follow them");
    }

    LibArchive library_;
    std::unique_ptr<archive, int (*)(archive*)> archive_;
    bool isEmpty_ = false;
    la_int64_t given_ = 0;       ///< packed bytes
    la_int64_t lastNotZero_ = 0; ///< behind the last of them that is not zero
    std::exception_ptr failure_; ///< of the packed source: libarchive is C and lets nothing through
};

bool isZstd(std::string_view front)
{
    // A frame, or one of those to be skipped that some packers begin with.
    const bool skippable = front.size() >= 4 && (front[0] & 0xF0) == 0x50 && front.substr(1, 3) == "\x2A\x4D\x18";
    return front.starts_with("\x28\xB5\x2F\xFD") || skippable;
}

bool isBzip2(std::string_view front)
{
    // Behind the size of its blocks stands the first one, or the end of data that have none.
    return front.size() == longestMark && front.starts_with("BZh")
        && (front.substr(4) == "1A" || front.substr(4) == "\x17\x72");
}

} // namespace

std::unique_ptr<ByteSource> unpacked(std::unique_ptr<ByteSource> source)
{
    using namespace std::string_view_literals;
    auto looked = std::make_unique<LookedAtSource>(std::move(source), longestMark);
    const std::string_view front = looked->front();
    if (front.starts_with("\x1F\x8B"))
        return std::make_unique<GzipSource>(std::move(looked));
    if (isZstd(front))
        return std::make_unique<ArchiveSource>(std::move(looked), "zstd", ARCHIVE_FILTER_ZSTD);
    if (front
        == "\xFD"
           "7zXZ\0"sv)
        return std::make_unique<ArchiveSource>(std::move(looked), "xz", ARCHIVE_FILTER_XZ);
    if (isBzip2(front))
        return std::make_unique<ArchiveSource>(std::move(looked), "bzip2", ARCHIVE_FILTER_BZIP2);
    return looked;
}

} // namespace vexroc
