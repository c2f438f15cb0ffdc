// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/ImageFormats_p.h>

#include <QtGlobal>

namespace Vantor::Algorithms
{

/// What happens to the pixels that a frame covers before the next one is painted.
enum class EGifDisposal { Keep, Clear, Restore };

/// A frame, as its head tells.
struct SGifFrame {
    qint64 nOffset = 0; ///< of its head in the file
    int nLeft = 0;      ///< on the screen, in pixels, as the others
    int nTop = 0;
    int nWidth = 0;
    int nHeight = 0;
    int nTransparent = -1; ///< index of the colour; -1 for none
    int nDelay = 0;        ///< how long it is shown, in hundredths of a second
    EGifDisposal eDisposal = EGifDisposal::Keep;
};

/// Goes through the heads of the frames of a GIF file, and decodes no pixels.
class CGifFrames
{
public:
    /// @param device  outlives the object, which moves its place
    explicit CGifFrames(QIODevice& device);

    /// Goes to the first frame, then to the next one; false behind the last.
    bool Next(SGifFrame& frame);
    /// Whether the file has more than it goes through.
    bool IsTooLong() const { return m_nBlocksLeft <= 0; }

private:
    bool SkipColors(char flags);
    bool SkipRest();
    bool ReadExtension(SGifFrame& frame);
    bool ReadHead(SGifFrame& frame);

    QIODevice& m_device;
    bool m_bGood = true;
    bool m_bInFrame = false; ///< the blocks of a frame follow, and before them its colours
    char m_flags = 0;        ///< of that frame
    int m_nBlocksLeft;
};

/// Adds a note on the number of frames when a GIF file holds more than one.
void NoteGifFrames(QIODevice& device, Notes& notes);

} // namespace Vantor::Algorithms
