# SPDX-License-Identifier: MIT
# vantor_opencv: what smooths images, and the peer of the image operations in tests and benchmarks. Debian installs its headers without a
# package file for CMake.
include_guard(GLOBAL)
find_path(OPENCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4 REQUIRED)
find_library(OPENCV_CORE_LIBRARY opencv_core REQUIRED)
find_library(OPENCV_IMGPROC_LIBRARY opencv_imgproc REQUIRED)
add_library(vantor_opencv INTERFACE)
target_include_directories(vantor_opencv SYSTEM INTERFACE "${OPENCV_INCLUDE_DIR}")
target_link_libraries(vantor_opencv INTERFACE "${OPENCV_IMGPROC_LIBRARY}" "${OPENCV_CORE_LIBRARY}")
