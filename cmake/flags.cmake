# How every target of the project is compiled. Private to the build: nothing of it reaches a target that links to us.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_CXX_EXTENSIONS OFF)

add_library(roc_flags INTERFACE)
target_compile_features(roc_flags INTERFACE cxx_std_20 c_std_99)
target_compile_options(roc_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Werror
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
    # Sums and products stay as written: no fused operation changes a last digit.
    -ffp-contract=off)
