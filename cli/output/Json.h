#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

/// How all JSON of the program is spelled. Bytes that are not UTF-8 become U+FFFD.
namespace vexroc::json {

std::string string(std::string_view text);
/// The shortest digits that read back as the same double. JSON has no number for the rest: NaN is null, the infinities
/// are the strings "Infinity" and "-Infinity".
std::string number(double value);
std::string dump(const nlohmann::ordered_json& value);

} // namespace vexroc::json
