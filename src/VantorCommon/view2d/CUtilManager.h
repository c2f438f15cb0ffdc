// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

class QImage;

namespace Vantor::Algorithms
{
class CImage;
}

/// Conversion between images of the core library and Qt's. No state; any thread.
class VANTORCOMMON_EXPORT CUtilManager
{
public:
    CUtilManager() = delete;

    /// Core image to GUI image. One channel becomes Grayscale8, three RGB888, four RGBA8888; samples of 8
    /// bits are assumed. Deliberate: two channels become RGB888 over the same bytes.
    /// @param pSource       null: false, and the destination stays as it was
    /// @param destination   replaced by the result
    /// @param bDeepCopy     true: the result owns its pixels. False: it shares the buffer of the source, so
    ///                      it is valid only while that lives and is not created again, and writing to one
    ///                      writes to both.
    /// @return whether the result is a real image: false for an empty source or lack of memory
    static bool ConvertImage(Vantor::Algorithms::CImage* pSource, QImage& destination, bool bDeepCopy);

    /// GUI image to core image: four channels of 8 bits, whatever the format of the source. Name and folder
    /// of the destination stay. Deliberate: of every row no more bytes arrive than a row of the source has,
    /// so what comes from formats of less than 4 bytes per pixel is black and transparent in the right part.
    /// @return false if either is null or there is no memory. The destination is as it was then, unless
    ///         memory ran out midway: it is partly filled, and what is missing is 0.
    static bool ConvertImage(const QImage& source, Vantor::Algorithms::CImage* pDestination);
};
