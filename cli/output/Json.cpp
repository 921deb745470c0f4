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

std::string insidePage(std::string json)
{
    for (std::size_t i = json.find('<'); i != std::string::npos; i = json.find('<', i))
        json.replace(i, 1, "\\u003c"); // "<" occurs inside strings only
    return json;
}

} // namespace vexroc::json
