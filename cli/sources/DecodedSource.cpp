#include "cli/sources/DecodedSource.h"

#include "cli/sources/LookedAtSource.h"
#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <vector>

namespace vexroc {

namespace {

constexpr std::size_t blockSize = std::size_t{128} << 10;

bool isUtf8Name(std::string_view name) { return equalIgnoringCase(name, "UTF-8") || equalIgnoringCase(name, "UTF8"); }

/// Bytes of which a character of the encoding has a multiple.
std::size_t unitOf(std::string_view encoding)
{
    const auto isOf = [&](std::string_view family) {
        return encoding.size() >= family.size() && equalIgnoringCase(encoding.substr(0, family.size()), family);
    };
    return isOf("UTF-32") || isOf("UTF32") || isOf("UCS-4") || isOf("UCS4") ? 4
        : isOf("UTF-16") || isOf("UTF16") || isOf("UCS-2") || isOf("UCS2")  ? 2
                                                                            : 1;
}

class Converter {
public:
    explicit Converter(const std::string& encoding) : opened_(iconv_open("UTF-8", encoding.c_str())) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(opened_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return opened_ != reinterpret_cast<iconv_t>(-1); }
    /// 0, or why not all was converted. Both views then stand behind what was.
    int convert(std::span<char>& from, std::span<char>& to)
    {
        char* in = from.data();
        std::size_t inLeft = from.size();
        char* out = to.data();
        std::size_t outLeft = to.size();
        const std::size_t answer = iconv(opened_, in == nullptr ? nullptr : &in, &inLeft, &out, &outLeft);
        const int error = answer == static_cast<std::size_t>(-1) ? errno : 0;
        from = from.last(inLeft);
        to = to.last(outLeft);
        return error;
    }

private:
    iconv_t opened_;
};

class DecodedSource final : public ByteSource {
public:
    DecodedSource(std::unique_ptr<ByteSource> source, const std::string& encoding)
        : ByteSource(source->name()), source_(std::move(source)), converter_(encoding), unit_(unitOf(encoding)),
          encoded_(blockSize), decoded_(blockSize)
    {
        if (!converter_.isOpen())
            throw inputError("no encoding " + inQuotes(encoding) + " on this system");
    }

    std::size_t read(std::span<char> block) override
    {
        while (ready_.empty() && !ended_)
            decodeMore();
        const std::size_t length = std::min(ready_.size(), block.size());
        std::copy_n(ready_.begin(), length, block.begin());
        ready_ = ready_.subspan(length);
        return length;
    }
    [[nodiscard]] std::optional<double> shareRead() const noexcept override { return source_->shareRead(); }

private:
    /// Decodes what is at hand, or else the next block.
    void decodeMore()
    {
        std::span<char> to(decoded_);
        to = to.first(to.size() - 1); // a place for a byte that is unknown
        const int error = left_.empty() ? 0 : converter_.convert(left_, to);
        const bool endsEarly = error == EINVAL || left_.empty();
        if (error == EILSEQ || (endsEarly && !refill() && !left_.empty())) {
            left_ = left_.subspan(std::min(unit_, left_.size()));
            to.data()[0] = '\xFF';
            to = {to.data() + 1, to.size()};
        } else if (endsEarly && left_.empty()) { // the end: what the converter still holds
            ended_ = true;
            std::span<char> nothing;
            converter_.convert(nothing, to);
        }
        ready_ = {decoded_.data(), to.data()};
    }

    /// Puts the next block behind what is left; false at the end of the source.
    bool refill()
    {
        std::copy(left_.begin(), left_.end(), encoded_.begin());
        const std::size_t length = source_->read(std::span(encoded_).subspan(left_.size()));
        left_ = std::span(encoded_).first(left_.size() + length);
        return length > 0;
    }

    std::unique_ptr<ByteSource> source_;
    Converter converter_;
    std::size_t unit_;
    std::vector<char> encoded_;
    std::vector<char> decoded_;
    std::span<char> left_;  ///< of encoded_, not yet decoded
    std::span<char> ready_; ///< of decoded_, not yet read
    bool ended_ = false;
};

/// What a mark in front of a text says; empty where there is none.
const char* markedEncoding(std::string_view front)
{
    using namespace std::string_view_literals;
    return front.starts_with("\xFF\xFE\0\0"sv) ? "UTF-32LE"
        : front.starts_with("\0\0\xFE\xFF"sv)  ? "UTF-32BE"
        : front.starts_with("\xFF\xFE"sv)      ? "UTF-16LE"
        : front.starts_with("\xFE\xFF"sv)      ? "UTF-16BE"
        : front.starts_with("\xEF\xBB\xBF"sv)  ? "UTF-8"
                                               : "";
}

} // namespace

std::unique_ptr<ByteSource> decoded(std::unique_ptr<ByteSource> source, const std::string& encoding)
{
    constexpr std::size_t longestMark = 4;
    auto looked = std::make_unique<LookedAtSource>(std::move(source), longestMark);
    const std::string marked = markedEncoding(looked->front());
    const std::string& wanted = marked.empty() ? encoding : marked;
    if (wanted.empty() || isUtf8Name(wanted))
        return looked;
    return std::make_unique<DecodedSource>(std::move(looked), wanted);
}

bool isEncoding(const std::string& name) { return name.find('/') == std::string::npos && Converter(name).isOpen(); }

} // namespace vexroc
