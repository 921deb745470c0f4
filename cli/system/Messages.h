#pragma once

#include <iosfwd>
#include <string_view>

namespace vexroc {

/// What the program says to people beside its results: "vexroc: caution: ...", one line each.
class Messages {
public:
    Messages(std::ostream& err, bool colour) : err_(err), colour_(colour) {}

    void note(std::string_view text) const { say("note", "36", text); }
    void caution(std::string_view text) const { say("caution", "33", text); }
    void error(std::string_view text) const { say("error", "1;31", text); }

private:
    void say(std::string_view kind, std::string_view sgr, std::string_view text) const;

    std::ostream& err_;
    bool colour_;
};

} // namespace vexroc
