#include "cli/sources/Compression.h"
#include "cli/words/Failure.h"
#include "tests/support/pieces.h"

#include <gmock/gmock.h>

#include <zlib.h>
#include <zstd.h>

#include <random>

namespace vexroc {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

std::string gzip(const std::string& text)
{
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string packed(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string zstd(const std::string& text)
{
    ZSTD_CCtx* const context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
    std::string packed(ZSTD_compressBound(text.size()), '\0');
    packed.resize(ZSTD_compress2(context, packed.data(), packed.size(), text.data(), text.size()));
    ZSTD_freeCCtx(context);
    return packed;
}

std::string unpacked(const std::string& bytes, std::size_t pieceSize = std::string::npos, std::size_t blockSize = 1000)
{
    const auto source = decompressed(std::make_unique<roctest::Pieces>(bytes, pieceSize));
    std::string text;
    std::string block(blockSize, '\0');
    while (const std::size_t length = source->read(block))
        text.append(block, 0, length);
    return text;
}

std::string textOrError(const std::string& bytes)
{
    try {
        return unpacked(bytes);
    } catch (const Failure& failure) {
        return std::to_string(failure.exitCode()) + ": " + failure.what();
    }
}

/// Hard to pack, so that a flipped byte lies in data as a rule.
std::string sampleText(std::size_t length)
{
    std::minstd_rand draw(3);
    std::string text;
    while (text.size() < length)
        text += static_cast<char>(' ' + draw() % 64);
    return text;
}

} // namespace

TEST(Compression, UnpacksWhatItRecognisesByContent)
{
    const std::string text = sampleText(5000);
    const std::string skippableFrame("\x50\x2A\x4D\x18\x02\0\0\0xy", 10);
    const std::string tapePadding(700, '\0');
    const std::pair<const char*, std::string> forms[] = {
        {"plain", text},
        {"gzip", gzip(text)},
        {"gzip, two members", gzip(text.substr(0, 77)) + gzip(text.substr(77))},
        {"gzip, an empty member, padding", gzip(text) + gzip("") + tapePadding},
        {"zstd", zstd(text)},
        {"zstd, frames", skippableFrame + zstd(text.substr(0, 77)) + skippableFrame + zstd(text.substr(77)) + zstd("")},
    };
    for (const auto& [name, bytes] : forms)
        for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::string::npos}) {
            SCOPED_TRACE(std::string(name) + ", pieces of " + std::to_string(size));
            EXPECT_EQ(unpacked(bytes, size), text);
            EXPECT_EQ(unpacked(bytes, size, 1), text);
        }
    for (const std::string shortText : {"", "\x1F", "\x28\xB5\x2F", "a"})
        EXPECT_EQ(unpacked(shortText, 1), shortText);
}

TEST(Compression, NamesTheSourceOfDataThatAreCutOffOrDamaged)
{
    const std::string text = sampleText(300);
    for (const auto& [format, packed] : {std::pair{"gzip", gzip(text)}, std::pair{"zstd", zstd(text)}}) {
        const std::string source = std::string("3: cannot read data.csv: its ") + format + " data ";
        for (std::size_t length = 4; length < packed.size(); ++length)
            EXPECT_THAT(textOrError(packed.substr(0, length)), StartsWith(source + "end too early")) << length;
        EXPECT_THAT(textOrError(packed + packed.substr(0, 20)), StartsWith(source + "end too early"));
        EXPECT_THAT(textOrError(packed + "rest"), AllOf(StartsWith(source + "are damaged ("), HasSubstr("again")));
        for (std::size_t place = 20; place < packed.size(); ++place) {
            std::string damaged = packed;
            damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
            EXPECT_THAT(textOrError(damaged), StartsWith(source)) << format << ", byte " << place;
        }
    }
}

} // namespace vexroc
