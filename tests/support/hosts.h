#pragma once

#include "host/ColumnRecordIter.h"
#include "host/ProgressListener.h"
#include "host/VexContVar.h"
#include "host/VexQueryCancel.h"
#include "host/VexVarList.h"
#include "tests/support/Exact.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/RocAlgorithm.h"

#include <array>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

/// Hosts in memory that behave, fail or cancel on request.
namespace roctest {

/// What the parts of a host share: it counts every call into the host, lets one of them throw and one cancel query
/// say yes.
struct Script {
    enum Call { hasMore, next, newPass, notify, cancelQuery, varType, valueType, callKinds };
    /// Thrown by a host that derives its exceptions from nothing.
    struct Failure {};
    static constexpr int never = -1;

    int throwAt = never;  ///< which call of all throws, from 0
    int cancelAt = never; ///< which cancel query says yes, from 0
    int calls = 0;
    std::array<int, callKinds> byKind{};

    /// Counts the call, throws if it is its turn, and gives back the part that answers it.
    template <class Part>
    Part& enter(Call call, Part& part)
    {
        ++byKind[call];
        if (calls++ == throwAt)
            throw Failure();
        return part;
    }
};

class ScriptedIter final : public VexCommon_920::MultiPassRecordIter {
public:
    ScriptedIter(VexCommon_920::ColumnRecordIter records, Script& script)
        : records_(std::move(records)), script_(script)
    {
    }
    [[nodiscard]] bool HasMore() const override { return script_.enter(Script::hasMore, records_).HasMore(); }
    VexCommon_920::Record* Next() override { return script_.enter(Script::next, records_).Next(); }
    [[nodiscard]] int GetFailReason() const override { return 0; }
    int NewPass() override { return script_.enter(Script::newPass, records_).NewPass(); }

private:
    VexCommon_920::ColumnRecordIter records_;
    Script& script_;
};

/// (records, share)
using Announcements = std::vector<std::pair<int, double>>;

/// A host's data: columns of equal length and what its variable list says of them. All calls go through the script.
struct HostData {
    VexXML_920::VexVarList variables;
    std::vector<std::vector<double>> columns;
    std::unique_ptr<Script> script = std::make_unique<Script>();

    /// Appends a continuous column of unknown range and returns its index.
    int add(std::vector<double> column, int valueType = VexXML_920::IVexVariable::plainValues);
    /// The data must outlive it.
    [[nodiscard]] ScriptedIter records() const;
};

/// All numbers of a result record.
[[nodiscard]] Numbers numbers(const ROCALG_920::ROCOutBase& record);

/// What a host reads back after a run.
struct Outcome {
    long code = 0;
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
/// The code and all numbers of the records and comparisons.
[[nodiscard]] Numbers numbers(const Outcome& outcome);
[[nodiscard]] Outcome readBack(const ROCALG_920::RocAlgorithm& facade);
/// A run on a facade of its own, without listener and cancel query.
[[nodiscard]] Outcome analyse(ROCALG_920::ROCSetting setting, HostData& data);

/// A facade with its listener and cancel query. The data outlive it; the settings that it was made with do not.
class Host final : VexCommon_920::ProgressListener, VexCommon_920::VexQueryCancel {
public:
    Host(ROCALG_920::ROCSetting setting, HostData& data);
    /// A run over the data; counts and announcements start again.
    long run(int throwAt = Script::never, int cancelAt = Script::never);
    [[nodiscard]] int calls(Script::Call call) const { return data_.script->byKind[call]; }
    /// The first one of the results.
    [[nodiscard]] const ROCALG_920::ROCOutBase& record() const;
    [[nodiscard]] Outcome outcome() const { return readBack(facade); }

    Announcements announcements;

private:
    int Notify(VexCommon_920::ProgressReport& report) override;
    [[nodiscard]] bool IsCancelRequested() override;

    HostData& data_;

public:
    ROCALG_920::RocAlgorithm facade;
};

} // namespace roctest
