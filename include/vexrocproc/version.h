/** @file
 * Which version of the library is loaded. Compiles as C99 and C++.
 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** The library's version, such as "0.1.0": a text that is never freed. Versions follow semantic versioning. */
__attribute__((visibility("default"))) const char* vexrocproc_version(void);

#ifdef __cplusplus
}
#endif
