#pragma once

/// Enumerations of the analysis. Their values are part of the interface.
namespace ROCConst_920 {

/// Does a test value equal to a cut-off count as positive?
enum Classification : int { Include = 0, Exclude = 1 };

/// Distribution assumption behind the standard error of an area.
enum Distribution : int { NonParametric = 0, BiNegativeExponential = 1 };

/// Which end of the test scale indicates a positive case.
enum Direction : int { LargerMorePositive = 0, SmallerMorePositive = 1 };

/// How precision-recall points are interpolated between two adjacent points of the curve.
enum PRInterpolation : int { AlongTP = 0, AlongFP = 1 };

/// Whether and how areas are compared.
enum ComparisonType : int { NoComparison = 0, IndependentComparison = 1, PairedComparison = 2 };

/// How the group variable splits the cases.
enum GroupType : int { NoGroup = 0, SelectGroup = 1, MidPointGroup = 2, CutPointGroup = 3 };

/// Relation between the group value of a case and that of a space or record: the cases whose value is equal to it,
/// at least it, or below it.
enum Operation : int { Equal = 0, GreaterOrEqual = 1, Less = 2 };

} // namespace ROCConst_920
