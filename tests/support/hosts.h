#pragma once

#include "host/ColumnRecordIter.h"
#include "host/ProgressListener.h"
#include "host/VexContVar.h"
#include "host/VexQueryCancel.h"
#include "host/VexVarList.h"
#include "tests/support/Exact.h"
#include "vexrocproc/RocAlgorithm.h"

#include <array>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

/// Hosts in memory: one that behaves, and the parts of one that fails or cancels on request.
namespace roctest {

/// A host's data: columns of equal length and what its variable list says of them.
struct HostData {
    VexXML_920::VexVarList variables;
    std::vector<std::vector<double>> columns;

    /// These append a column and return its index. Without a description it is continuous with an unknown range.
    int add(std::vector<double> column);
    int add(std::vector<double> column, std::unique_ptr<VexXML_920::IVexVariable> description);
    /// The data must outlive it.
    [[nodiscard]] VexCommon_920::ColumnRecordIter records() const;
};

/// All numbers of a result record.
[[nodiscard]] Numbers numbers(const ROCALG_920::ROCOutBase& record);
[[nodiscard]] Numbers numbers(const ROCALG_920::ROCComparisonOutStats& comparison);

/// What a host reads back after a run.
struct Outcome {
    long code = -1;
    bool built = false;
    std::vector<std::vector<long>> warnings; ///< a code and its parameters each
    bool hasResults = false;
    std::vector<Numbers> records;
    std::vector<Numbers> comparisons;

    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend void PrintTo(const Outcome& outcome, std::ostream* out)
    {
        *out << "code " << outcome.code << ", " << outcome.warnings.size() << " warnings, " << outcome.records.size()
             << " records, " << outcome.comparisons.size() << " comparisons";
    }
};
[[nodiscard]] Outcome readBack(const ROCALG_920::RocAlgorithm& facade);
/// A run on a facade of its own.
[[nodiscard]] Outcome analyse(ROCALG_920::ROCSetting setting, HostData& data);

/// What the parts of a scripted host share: it counts every call into the host, lets one of them throw and one cancel
/// query say yes.
class Script {
public:
    enum Call { hasMore, next, newPass, notify, cancelQuery, varType, name, valueType, valueLabels, callKinds };
    /// Thrown by a host that derives its exceptions from nothing.
    struct Failure {};
    static constexpr int never = -1;

    int throwAt = never;  ///< which call of all throws, from 0
    int cancelAt = never; ///< which cancel query says yes, from 0

    /// Counts the call and throws if it is its turn.
    void enter(Call call);
    [[nodiscard]] int calls() const noexcept { return calls_; }
    [[nodiscard]] int calls(Call call) const noexcept { return byKind_[call]; }

private:
    int calls_ = 0;
    std::array<int, callKinds> byKind_{};
};

class ScriptedIter final : public VexCommon_920::MultiPassRecordIter {
public:
    ScriptedIter(const HostData& data, Script& script) : records_(data.records()), script_(script) {}
    [[nodiscard]] bool HasMore() const override;
    VexCommon_920::Record* Next() override;
    [[nodiscard]] int GetFailReason() const override { return 0; }
    int NewPass() override;

private:
    VexCommon_920::ColumnRecordIter records_;
    Script& script_;
};

/// Keeps every announcement: (records, share).
class ScriptedListener final : public VexCommon_920::ProgressListener {
public:
    explicit ScriptedListener(Script& script) : script_(script) {}
    int Notify(VexCommon_920::ProgressReport& report) override;

    std::vector<std::pair<int, double>> announcements;

private:
    Script& script_;
};

class ScriptedCancel final : public VexCommon_920::VexQueryCancel {
public:
    explicit ScriptedCancel(Script& script) : script_(script) {}
    [[nodiscard]] bool IsCancelRequested() override;

private:
    Script& script_;
};

class ScriptedVariable final : public VexXML_920::VexContVar {
public:
    ScriptedVariable(Script& script, int valueTypeOfValues)
        : VexContVar("scripted"), script_(script), valueType_(valueTypeOfValues)
    {
    }
    [[nodiscard]] int GetVarType() const override;
    [[nodiscard]] std::string GetName() const override;
    [[nodiscard]] int GetValueType() const override;
    [[nodiscard]] const VexXML_920::VexValueLabels* GetValueLabels() const override;

private:
    Script& script_;
    int valueType_;
};

} // namespace roctest
