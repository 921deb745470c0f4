#pragma once

/// The array calls per case, over sizes and shapes of scores, beside an area by one std::sort. "x_sort" is how many
/// times faster the call is than that, in the same run.
void registerArrayCalls();

/// Whole analyses through the facade, beside the array calls that compute the same.
void registerFacade();

/// The calls of inference.h, each beside one of the array calls. "x_peer" is how many times as long it takes.
void registerInference();
