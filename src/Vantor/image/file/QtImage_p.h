// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QImage>

class QIODevice;

namespace Vantor::Algorithms
{

class CImage;

/// What the header of a file promises.
struct SExpectedImage {
    int nWidth = 0;
    int nHeight = 0;
    int nChannels = 0;                             ///< of the core image: 1, 3 or 4
    QImage::Format eFormat = QImage::Format_RGB32; ///< what Qt's reader decodes to
};

/// Reads the image with Qt's reader of that format and applies the orientation that it finds. A reader that
/// sees another size than expected is not let loose on the file.
bool ReadWithQt(QIODevice& device, const char* format, const SExpectedImage& expected, CImage& image);

/// Makes a core image of 1 (grey), 3 or 4 channels.
bool ConvertToCore(const QImage& from, int channels, CImage& image);

} // namespace Vantor::Algorithms
