#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# packages.sh build|run|test|coverage|package|clients|bench ... : installs the Debian packages of the named groups that are missing.
set -euo pipefail

build="build-essential python3 cmake ninja-build pkg-config qtbase5-dev qttools5-dev libpoppler-qt5-dev libfontconfig-dev libseccomp-dev libpng-dev zlib1g-dev libjpeg62-turbo-dev libtiff-dev libgif-dev libhwy-dev libtesseract-dev libleptonica-dev libopencv-imgproc-dev"
run="libqt5widgets5 libqt5sql5-sqlite libgl1-mesa-dri fonts-liberation fonts-dejavu-core xvfb xauth openbox x11-utils tesseract-ocr-eng tesseract-ocr-vie tesseract-ocr-kor"
test="doxygen dbus-daemon weston qtwayland5 valgrind xclip xdotool imagemagick mariadb-server libqt5sql5-mysql clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev"
coverage="gcovr"
package="qttools5-dev dpkg-dev debhelper chrpath lintian desktop-file-utils shared-mime-info mandoc"
clients="imagej openjdk-17-jdk-headless librsvg2-bin labelme python3-skimage imagemagick"
bench="libbenchmark-dev libspdlog-dev libturbojpeg0-dev"

wanted=""
for group in "$@"; do wanted+=" ${!group}"; done
missing=""
for package in $wanted; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=" $package"
done
[ -n "$missing" ] || exit 0
echo "Installing:$missing"
sudo=""
[ "$(id -u)" = 0 ] || sudo=sudo
$sudo apt-get update -qq
# shellcheck disable=SC2086
$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
