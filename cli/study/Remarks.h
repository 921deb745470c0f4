#pragma once

#include "cli/study/Results.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct vexroc_remarks;

namespace vexroc {

/// A note or a caution as it is shown: one line, visible text.
struct Remark {
    std::string code;
    long long count; ///< of its subjects
    std::string text;
};

/// What is said beside the numbers. The program collects what it is about; which rule holds, and the words for it, are
/// the library's. A subject of a kind that is there already changes nothing.
class Remarks {
public:
    Remarks();

    /// One of the library's codes; docs/remarks.md lists them. Subject and detail are texts as the data spell them.
    void add(const char* code, const std::string& subject = "", const std::string& detail = "");
    /// Of the cases alone that an area or a curve is of.
    void addCases(const Area& area);
    /// From now on nothing is said of standard errors and intervals of areas: none is shown.
    void leaveOutErrors() noexcept { errorsLeftOut_ = true; }
    /// Nothing is said of areas themselves, how ties enter and how they are tested: none is shown.
    void leaveOutAreas() noexcept { areasLeftOut_ = true; }

    [[nodiscard]] std::vector<Remark> notes() const { return linesOf(false); }
    [[nodiscard]] std::vector<Remark> cautions() const { return linesOf(true); }
    /// For calls that add to it.
    [[nodiscard]] vexroc_remarks* handle() noexcept { return list_.get(); }

private:
    struct Free {
        void operator()(vexroc_remarks* list) const noexcept;
    };
    [[nodiscard]] std::vector<Remark> linesOf(bool caution) const;

    std::unique_ptr<vexroc_remarks, Free> list_;
    bool errorsLeftOut_ = false;
    bool areasLeftOut_ = false;
};

/// A test, in its group if it has one: "marker where sex = female".
std::string subjectOf(const Area& area);
/// "a and b" for two tests, else the test of two groups.
std::string subjectOf(const Difference& difference);

} // namespace vexroc
