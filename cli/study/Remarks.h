#pragma once

#include "cli/study/Results.h"

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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
    /// From now on such remarks are left out: what they are about is not shown. The codes live as long.
    void leaveOut(std::initializer_list<std::string_view> codes) { leftOut_.insert(leftOut_.end(), codes); }

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
    std::vector<std::string_view> leftOut_; ///< codes
};

/// A test, in its group if it has one: "marker where sex = female".
std::string subjectOf(const Area& area);
/// "a and b" for two tests, else the test of two groups.
std::string subjectOf(const Difference& difference);

} // namespace vexroc
