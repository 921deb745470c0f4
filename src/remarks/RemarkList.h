#pragma once

#include "remarks/Catalogue.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace ROCALG_920::remarks {

/// Remarks of one kind about several subjects, said in one line.
class RemarkList {
public:
    explicit RemarkList(vexroc_voice voice) : voice_(voice) {}

    /// What a remark is about.
    struct About {
        std::string_view subject = {};   ///< a test, a column, a pair; empty for the whole analysis
        std::string_view detail = {};    ///< stands in brackets behind the subject, or alone
        std::string_view test = {};      ///< name that an advice can spell; empty for none
        std::string_view direction = {}; ///< that an advice can spell
    };
    /// Adds a subject; one that the kind has already changes nothing. Of subjects that are empty the details count.
    void add(const Kind& kind, const About& about);

    /// A test by which an advice shows how its direction is given.
    struct Example {
        std::string test;
        std::string direction;
    };

    [[nodiscard]] std::size_t size() const noexcept { return remarks_.size() - (hidesTies() ? 1 : 0); }
    struct Line {
        const Kind& kind;
        long long count; ///< of subjects
        std::string text;
    };
    /// One of them: cautions first, then in the order in which their kinds came.
    [[nodiscard]] Line line(std::size_t index) const;

private:
    struct Remark {
        const Kind* kind;
        std::unordered_set<std::string> known = {};
        std::vector<std::string> named = {}; ///< the first subjects
        std::vector<Example> examples = {};  ///< the first subject of each direction
    };
    [[nodiscard]] static bool isTies(const Remark& remark) noexcept { return remark.kind->code == "ties"; }
    Remark& remarkOf(const Kind& kind);
    /// Nearly all data have ties: where there is another note, theirs is not worth a line.
    [[nodiscard]] bool hidesTies() const noexcept;
    [[nodiscard]] std::string textOf(const Remark& remark) const;
    [[nodiscard]] std::string adviceOf(const Remark& remark) const;

    vexroc_voice voice_;
    std::deque<Remark> remarks_; ///< in the order of lines
};

} // namespace ROCALG_920::remarks
