// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

class QImage;

namespace Vantor::Algorithms
{
class CImage;
}

/// Converts between images of the core library and Qt's. No state; any thread.
class VANTORCOMMON_EXPORT CUtilManager
{
public:
    CUtilManager() = delete;

    /// Core image to GUI image. One channel becomes Grayscale8, three RGB888, four RGBA8888; assumes samples
    /// of 8 bits. Deliberate: two channels become RGB888 over the same bytes.
    /// @param pSource       null: false, and the destination does not change
    /// @param destination   replaced by the result
    /// @param bDeepCopy     true: the result owns its pixels. False: it shares the buffer of the source, so
    ///                      it is valid only while the source lives and keeps its buffer, and writing to one
    ///                      writes to both.
    /// @return whether the result is a real image: false for an empty source or lack of memory
    static bool ConvertImage(Vantor::Algorithms::CImage* pSource, QImage& destination, bool bDeepCopy);

    /// ConvertImage without a copy, to read from: the result copies the buffer when it is written to, and a
    /// deferred source stays deferred.
    static bool ViewImage(const Vantor::Algorithms::CImage* pSource, QImage& destination);

    /// GUI image to core image: four channels of 8 bits, whatever the format of the source. Name and folder
    /// of the destination stay. Deliberate: it copies no more bytes of a row than the source has in a row, so
    /// an image of less than 4 bytes per pixel becomes black and transparent in its right part.
    /// @return false if either is null or memory ends. The destination then does not change, unless memory
    ///         ended midway: it is partly filled, and the rest is 0.
    static bool ConvertImage(const QImage& source, Vantor::Algorithms::CImage* pDestination);
};
