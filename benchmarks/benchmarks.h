#pragma once

/// The array calls per case, over sizes and shapes of scores, beside one std::sort of the same observations.
void registerArrayCalls();

/// Whole analyses through the facade, beside the array calls that compute the same.
void registerFacade();
