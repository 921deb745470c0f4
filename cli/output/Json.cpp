#include "cli/output/Json.h"

#include "cli/words/Numbers.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace vexroc::json {

std::string string(std::string_view text) { return dump(text); }

std::string number(double value)
{
    if (std::isnan(value))
        return "null";
    if (std::isinf(value))
        return value > 0.0 ? "\"Infinity\"" : "\"-Infinity\"";
    return shortest(value);
}

std::string dump(const nlohmann::ordered_json& value)
{
    return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace vexroc::json
