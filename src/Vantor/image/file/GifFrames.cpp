// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/GifFrames_p.h>

#include <QByteArray>
#include <QIODevice>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kScreenBytes = 13;
constexpr int kFrameBytes = 9;
/// Deliberate: counting ends here, because a file of tiny blocks takes long to scan. A usual file has a block
/// for every 256 bytes.
constexpr int kMostBlocks = 1 << 20;

bool Skip(QIODevice& device, qint64 nBytes)
{
    return nBytes <= device.size() - device.pos() && device.seek(device.pos() + nBytes);
}

/// Skips the colour table, if the flags announce one.
bool SkipColors(QIODevice& device, char flags)
{
    return (flags & 0x80) == 0 || Skip(device, 3 << ((flags & 7) + 1));
}

/// Skips blocks up to and including the empty one that ends them.
bool SkipBlocks(QIODevice& device, int& nBlocksLeft)
{
    char nBytes = 0;
    while (--nBlocksLeft > 0 && device.getChar(&nBytes)) {
        if (nBytes == 0)
            return true;
        if (!Skip(device, static_cast<unsigned char>(nBytes)))
            return false;
    }
    return false;
}

int CountFrames(QIODevice& device, int& nBlocksLeft)
{
    int nFrames = 0;
    const QByteArray screen = device.read(kScreenBytes);
    if (screen.size() != kScreenBytes || !SkipColors(device, screen[10]))
        return nFrames;
    char introducer = 0;
    while (device.getChar(&introducer)) {
        if (introducer == ',') {
            const QByteArray frame = device.read(kFrameBytes);
            if (frame.size() != kFrameBytes)
                return nFrames;
            ++nFrames;
            if (!SkipColors(device, frame[kFrameBytes - 1]))
                return nFrames;
        } else if (introducer != '!') {
            return nFrames;
        }
        // Skip the size of the codes, or the kind of the extension.
        if (!Skip(device, 1) || !SkipBlocks(device, nBlocksLeft))
            return nFrames;
    }
    return nFrames;
}
} // namespace

void NoteGifFrames(QIODevice& device, Notes& notes)
{
    int nBlocksLeft = kMostBlocks;
    const int nFrames = device.seek(0) ? CountFrames(device, nBlocksLeft) : 0;
    if (nFrames > 1)
        notes.push_back(std::string("It is the first of ") + (nBlocksLeft > 0 ? "" : "at least ") +
                        std::to_string(nFrames) + " frames.");
}

} // namespace Vantor::Algorithms
