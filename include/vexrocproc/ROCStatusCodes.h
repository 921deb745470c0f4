#pragma once

#include <string>

/// Codes that the status and the warnings of an analysis carry. Their values are part of the interface.
///
/// An error ends the run; a warning is collected and the run goes on. The names of the codes that have one are given
/// by ROCComponentDisplay::ParseErrCodeToStr.
namespace ROCALG_920::statusCode {

inline constexpr int noError = 0;
/// The host's cancel query asked the run to stop.
inline constexpr int cancelled = 1;

// Errors.

/// An exception escaped the analysis, or the settings ask for something unknown.
inline constexpr int unexpected = 430001;
/// No state variable is set.
inline constexpr int stateVarNotSet = 430002;
/// The positive value of the state is the missing value.
inline constexpr int stateValueMissing = 430003;
/// No case has the positive value of the state.
inline constexpr int stateValueNotFound = 430004;
/// No test variable remains after negative indices and the state variable are dropped.
inline constexpr int noTestVar = 430005;
/// A paired comparison needs two test variables.
inline constexpr int fewerThanTwoTestVars = 430006;
/// An independent comparison needs a group variable.
inline constexpr int groupRequired = 430007;
/// The data hold no record.
inline constexpr int noData = 430010;
/// An independent comparison whose group variable makes one group only.
inline constexpr int groupConstant = 430011;
/// An independent comparison in which a group holds no case.
inline constexpr int groupEmpty = 430012;

// Warnings.

/// Reserved: records tell themselves that they hold no positive or no negative case.
inline constexpr int zeroPositiveOrNegative = 430101;
/// Some test value occurs with both states. Its parameters are the indices of the test variables with ties.
inline constexpr int tiesExist = 430102;
/// The bi-negative exponential assumption was replaced by the nonparametric one.
inline constexpr int distributionChanged = 430103;
/// The group variable is ignored.
inline constexpr int groupIgnored = 430104;

} // namespace ROCALG_920::statusCode

namespace ROCComponentDisplay {

/// Replaces the text by the name of a code; "Unrecognized error code" for a code without a name.
[[gnu::visibility("default")]] void ParseErrCodeToStr(int code, std::string& name);

} // namespace ROCComponentDisplay
