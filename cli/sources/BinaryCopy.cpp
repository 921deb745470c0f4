#include "cli/sources/BinaryCopy.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <optional>

namespace vexroc {

namespace {

/// The bytes, highest first, as a number.
template <class Unsigned>
Unsigned bigEndian(std::string_view bytes) noexcept
{
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
        value = static_cast<Unsigned>(value << 8 | static_cast<unsigned char>(bytes[i]));
    return value;
}

template <class Integer>
Integer integer(std::string_view bytes) noexcept
{
    return static_cast<Integer>(bigEndian<std::make_unsigned_t<Integer>>(bytes));
}

/// A numeric: groups of four decimal digits, the first of which counts 10000 to the power of `weight`.
struct Numeric {
    std::string_view groups;
    std::int16_t weight;
    std::uint16_t sign;
    std::uint16_t scale; ///< digits behind the point

    [[nodiscard]] std::uint16_t group(int power) const noexcept
    {
        const int index = weight - power;
        const bool there = index >= 0 && static_cast<std::size_t>(index) < groups.size() / 2;
        return there ? bigEndian<std::uint16_t>(groups.substr(2 * static_cast<std::size_t>(index))) : 0;
    }
};

constexpr std::uint16_t negative = 0x4000;
constexpr std::uint16_t notANumber = 0xC000;
constexpr std::uint16_t plusInfinity = 0xD000;
constexpr std::uint16_t minusInfinity = 0xF000;

std::optional<Numeric> numericIn(std::string_view field)
{
    constexpr std::size_t headLength = 8;
    if (field.size() < headLength)
        return std::nullopt;
    const Numeric numeric{.groups = field.substr(headLength),
                          .weight = integer<std::int16_t>(field.substr(2)),
                          .sign = bigEndian<std::uint16_t>(field.substr(4)),
                          .scale = bigEndian<std::uint16_t>(field.substr(6))};
    return numeric.groups.size() == 2 * std::size_t{bigEndian<std::uint16_t>(field)} ? std::optional(numeric)
                                                                                     : std::nullopt;
}

/// The digits as the server prints them.
void spell(const Numeric& numeric, std::string& digits)
{
    const auto append = [&](int power) {
        const unsigned int group = numeric.group(power);
        for (const unsigned int unit : {1000u, 100u, 10u, 1u})
            digits += static_cast<char>('0' + group / unit % 10);
    };
    digits.clear();
    if (numeric.sign == negative)
        digits += '-';
    const std::size_t begin = digits.size();
    for (int power = numeric.weight; power >= 0; --power)
        append(power);
    digits.erase(begin, std::min(digits.find_first_not_of('0', begin), digits.size()) - begin);
    if (digits.size() == begin)
        digits += '0';
    if (numeric.scale == 0)
        return;
    const std::size_t length = digits.size() + 1 + numeric.scale;
    digits += '.';
    for (int power = -1; digits.size() < length; --power)
        append(power);
    digits.resize(length);
}

/// Bytes of a field; 0 where they vary.
constexpr std::size_t widthOf(BinaryCopy::Type type) noexcept
{
    using Type = BinaryCopy::Type;
    switch (type) {
    case Type::boolean: return 1;
    case Type::int2: return 2;
    case Type::int4:
    case Type::float4: return 4;
    case Type::int8:
    case Type::float8: return 8;
    case Type::numeric:
    case Type::text: break;
    }
    return 0;
}

} // namespace

BinaryCopy::Type BinaryCopy::typeOf(unsigned int catalogueNumber) noexcept
{
    switch (catalogueNumber) { // fixed: they are part of the protocol
    case 16: return Type::boolean;
    case 20: return Type::int8;
    case 21: return Type::int2;
    case 23: return Type::int4;
    case 700: return Type::float4;
    case 701: return Type::float8;
    case 1700: return Type::numeric;
    }
    return Type::text;
}

BinaryCopy::BinaryCopy(std::vector<Type> types, RowTaker takeRow)
    : types_(std::move(types)), rowTaker_(std::move(takeRow)), cells_(types_.size()), digits_(types_.size())
{
}

bool BinaryCopy::feed(std::string_view bytes)
{
    // The server sends whole rows as a rule: then nothing is copied.
    const bool resumes = !pending_.empty();
    if (resumes)
        pending_ += bytes;
    rest_ = resumes ? std::string_view(pending_) : bytes;
    Progress progress = Progress::made;
    while (progress == Progress::made && !complete_)
        progress = headerDone_ ? takeRow() : takeHeader();
    pending_ = std::string(rest_);
    return progress != Progress::notUnderstood && (!complete_ || pending_.empty());
}

BinaryCopy::Progress BinaryCopy::takeHeader()
{
    constexpr std::string_view signature{"PGCOPY\n\xFF\r\n\0", 11};
    constexpr std::size_t length = 19; // with flags and the length of an extension
    if (rest_.size() < length)
        return Progress::needsMore;
    if (!rest_.starts_with(signature))
        return Progress::notUnderstood;
    const std::size_t extension = bigEndian<std::uint32_t>(rest_.substr(15));
    if (rest_.size() < length + extension)
        return Progress::needsMore;
    rest_.remove_prefix(length + extension);
    headerDone_ = true;
    return Progress::made;
}

BinaryCopy::Progress BinaryCopy::takeRow()
{
    std::string_view row = rest_;
    if (row.size() < 2)
        return Progress::needsMore;
    const auto fields = integer<std::int16_t>(row);
    row.remove_prefix(2);
    constexpr std::int16_t end = -1;
    complete_ = fields == end;
    if (!complete_ && static_cast<std::size_t>(fields) != types_.size())
        return Progress::notUnderstood;
    for (std::size_t i = 0; !complete_ && i < types_.size(); ++i) {
        if (row.size() < 4)
            return Progress::needsMore;
        const auto length = integer<std::int32_t>(row);
        row.remove_prefix(4);
        cells_[i] = {};
        if (length < 0) // NULL
            continue;
        const auto size = static_cast<std::size_t>(length);
        if (row.size() < size)
            return Progress::needsMore;
        if (!readField(types_[i], row.substr(0, size), digits_[i], cells_[i]))
            return Progress::notUnderstood;
        row.remove_prefix(size);
    }
    rest_ = row;
    if (!complete_)
        rowTaker_(cells_);
    return Progress::made;
}

bool BinaryCopy::readField(Type type, std::string_view field, std::string& digits, Cell& cell)
{
    if (const std::size_t width = widthOf(type); width > 0 && field.size() != width)
        return false;
    switch (type) {
    case Type::boolean: cell = field.front() != '\0'; return true;
    case Type::int2: cell = std::int64_t{integer<std::int16_t>(field)}; return true;
    case Type::int4: cell = std::int64_t{integer<std::int32_t>(field)}; return true;
    case Type::int8: cell = integer<std::int64_t>(field); return true;
    case Type::float4: cell = double{std::bit_cast<float>(bigEndian<std::uint32_t>(field))}; return true;
    case Type::float8: cell = std::bit_cast<double>(bigEndian<std::uint64_t>(field)); return true;
    case Type::numeric: return readNumeric(field, digits, cell);
    case Type::text: break;
    }
    cell = field;
    return true;
}

bool BinaryCopy::readNumeric(std::string_view field, std::string& digits, Cell& cell)
{
    const std::optional<Numeric> numeric = numericIn(field);
    if (!numeric)
        return false;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    switch (numeric->sign) {
    case notANumber: return true; // no value
    case plusInfinity: cell = infinity; return true;
    case minusInfinity: cell = -infinity; return true;
    }
    spell(*numeric, digits);
    cell = std::string_view(digits);
    return true;
}

} // namespace vexroc
