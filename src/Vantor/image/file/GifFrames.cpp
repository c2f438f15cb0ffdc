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
constexpr int kControlBytes = 4;
constexpr char kControl = '\xf9';
/// Deliberate: it ends here, because a file of tiny blocks takes long to scan. A usual file has a block for
/// every 256 bytes.
constexpr int kMostBlocks = 1 << 20;

bool Skip(QIODevice& device, qint64 nBytes)
{
    return nBytes <= device.size() - device.pos() && device.seek(device.pos() + nBytes);
}

/// A number of 16 bits.
int WordAt(const QByteArray& bytes, int nAt)
{
    return static_cast<unsigned char>(bytes[nAt]) | static_cast<unsigned char>(bytes[nAt + 1]) << 8;
}

EGifDisposal DisposalOf(char flags)
{
    const int nKind = flags >> 2 & 7;
    return nKind == 2 ? EGifDisposal::Clear : nKind == 3 ? EGifDisposal::Restore : EGifDisposal::Keep;
}
} // namespace

CGifFrames::CGifFrames(QIODevice& device) : m_device(device), m_nBlocksLeft(kMostBlocks)
{
    const QByteArray screen = device.seek(0) ? device.read(kScreenBytes) : QByteArray();
    m_bGood = screen.size() == kScreenBytes && SkipColors(screen[10]);
}

/// Skips the colour table, if the flags announce one.
bool CGifFrames::SkipColors(char flags)
{
    return (flags & 0x80) == 0 || Skip(m_device, 3 << ((flags & 7) + 1));
}

/// Skips blocks up to and including the empty one that ends them.
bool CGifFrames::SkipRest()
{
    char nBytes = 0;
    while (--m_nBlocksLeft > 0 && m_device.getChar(&nBytes)) {
        if (nBytes == 0)
            return true;
        if (!Skip(m_device, static_cast<unsigned char>(nBytes)))
            return false;
    }
    return false;
}

bool CGifFrames::ReadExtension(SGifFrame& frame)
{
    char kind = 0;
    if (!m_device.getChar(&kind))
        return false;
    const QByteArray block = kind == kControl ? m_device.peek(1 + kControlBytes) : QByteArray();
    if (block.size() == 1 + kControlBytes && block[0] == kControlBytes) {
        frame.eDisposal = DisposalOf(block[1]);
        frame.nDelay = WordAt(block, 2);
        frame.nTransparent = (block[1] & 1) != 0 ? static_cast<unsigned char>(block[4]) : -1;
    }
    return SkipRest();
}

bool CGifFrames::ReadHead(SGifFrame& frame)
{
    frame.nOffset = m_device.pos() - 1;
    const QByteArray head = m_device.read(kFrameBytes);
    if (head.size() != kFrameBytes)
        return false;
    frame.nLeft = WordAt(head, 0);
    frame.nTop = WordAt(head, 2);
    frame.nWidth = WordAt(head, 4);
    frame.nHeight = WordAt(head, 6);
    m_flags = head[8];
    m_bInFrame = true;
    return true;
}

bool CGifFrames::Next(SGifFrame& frame)
{
    frame = {};
    // Behind the colours is the size of the codes.
    m_bGood = m_bGood && (!m_bInFrame || (SkipColors(m_flags) && Skip(m_device, 1) && SkipRest()));
    m_bInFrame = false;
    char introducer = 0;
    while (m_bGood && m_device.getChar(&introducer)) {
        if (introducer == ',') {
            m_bGood = ReadHead(frame);
            return m_bGood;
        }
        m_bGood = introducer == '!' && ReadExtension(frame);
    }
    return false;
}

void NoteGifFrames(QIODevice& device, Notes& notes)
{
    CGifFrames frames(device);
    SGifFrame frame;
    int nFrames = 0;
    while (frames.Next(frame))
        ++nFrames;
    if (nFrames > 1)
        notes.push_back(std::string("It is the first of ") + (frames.IsTooLong() ? "at least " : "") +
                        std::to_string(nFrames) + " frames.");
}

} // namespace Vantor::Algorithms
