#pragma once

#include "cli/study/RowSink.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// Takes PostgreSQL's binary copy format apart.
///
/// Life: feed takes the bytes in parts of any length and hands over every row that they complete. The cells, and the
/// texts that they point to, are valid during that call only.
/// Source: PostgreSQL 15 documentation, COPY, binary format; numeric as its own send function writes it.
class BinaryCopy {
public:
    /// How a field is sent.
    enum class Type { boolean, int2, int4, int8, float4, float8, numeric, text };
    /// Of a type by its number in the system catalogue; text for all that have no form of their own here.
    static Type typeOf(unsigned int catalogueNumber) noexcept;

    using RowTaker = std::function<void(std::span<const Cell>)>;
    BinaryCopy(std::vector<Type> types, RowTaker takeRow);

    /// False for bytes that the format does not allow.
    [[nodiscard]] bool feed(std::string_view bytes);
    /// Has the end of the copy been seen?
    [[nodiscard]] bool isComplete() const noexcept { return complete_; }

private:
    enum class Progress { made, needsMore, notUnderstood };
    Progress takeHeader();
    Progress takeRow();
    static bool readField(Type type, std::string_view field, std::string& digits, Cell& cell);
    static bool readNumeric(std::string_view field, std::string& digits, Cell& cell);

    std::vector<Type> types_;
    RowTaker rowTaker_;
    std::string pending_;   ///< bytes of what is not complete yet
    std::string_view rest_; ///< of what is being taken
    std::vector<Cell> cells_;
    std::vector<std::string> digits_; ///< of numeric cells, parallel to cells_
    bool headerDone_ = false;
    bool complete_ = false;
};

} // namespace vexroc
