#include "tests/driver/facade_agreement.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/values.h"

#include <sstream>

using namespace roctest;
using namespace ROCALG_920;
using namespace ROCConst_920;

namespace {

constexpr int nColumns = 6;

void describe(FuzzInput& input, VexXML_920::VexVarList& variables)
{
    switch (input.below(4)) {
    case 0: variables.AddTwoValued("v"); return;
    case 1: variables.AddCategorical("v", {{0, "none"}, {1, "some"}}); return;
    case 2: {
        const double low = static_cast<double>(input.below(5));
        variables.AddContinuous("v", low, low + input.below(5));
        return;
    }
    }
    variables.AddContinuous("v");
}

/// Mostly a column that there is.
int anyColumn(FuzzInput& input)
{
    const int choice = input.below(64);
    return choice < 60 ? choice % nColumns : input.take<std::int8_t>();
}

ROCSetting anySetting(FuzzInput& input)
{
    ROCSetting setting;
    setting.setStateVar(input.below(16) != 0 ? 0 : anyColumn(input), input.below(16) != 0 ? 1.0 : hardValue(input));
    std::vector<int> testVars;
    for (int n = input.below(5); n >= 0; --n)
        testVars.push_back(anyColumn(input));
    setting.setTestVars(testVars);
    switch (input.below(4)) {
    case 0: setting.setCutOffGroupVar(anyColumn(input), hardValue(input)); break;
    case 1: setting.setMidPointGroupVar(anyColumn(input)); break;
    case 2: setting.setSelectGroupVar(anyColumn(input), hardValue(input), hardValue(input)); break;
    }
    setting.setComparisonType(static_cast<ComparisonType>(input.below(32) != 0 ? input.below(3) : input.take<int>()));
    setting.setClassification(static_cast<Classification>(input.below(2)));
    setting.setDirection(static_cast<Direction>(input.below(2)));
    setting.setDistribution(static_cast<Distribution>(input.below(2)));
    setting.setPRInterpolationType(static_cast<PRInterpolation>(input.below(2)));
    setting.setNeedPR(input.coin());
    setting.setNeedROC(input.coin());
    setting.setConfidenceLevel(input.coin() ? 0.9 : input.take<double>());
    setting.setFrequencyWeightVar(input.coin() ? anyColumn(input) : -1);
    return setting;
}

} // namespace

/// Any settings, variables and records: the facade says the same twice, its results agree with the array calls on the
/// cases that they stand for, and they can be displayed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzInput input(bytes, size);
    HostData data;
    for (int column = 0; column < nColumns; ++column)
        describe(input, data.variables);
    data.columns.resize(nColumns);
    const ROCSetting setting = anySetting(input);
    while (input.left() > 0)
        for (std::vector<double>& column : data.columns)
            column.push_back(input.below(8) != 0 ? input.below(4) : hardValue(input));
    requireNone(facadeDisagreement(setting, data));

    Host host(setting, data);
    host.run();
    std::ostringstream text;
    host.facade.Display(text);
    setting.Display(text);
    require(!text.str().empty(), "nothing displayed");
    return 0;
}
