// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/BurnIn.h>

#include <QBuffer>
#include <QPainter>
#include <memory>

class QPdfWriter;

/// The stages of what BurnIn makes. Only the painting of annotations needs the GUI thread; one thread at a
/// time uses a picture.
namespace BurnIn
{
/// The image as the picture to paint on, see Paint. Any thread.
QImage MakeGround(const Vantor::Algorithms::CImage& image);
/// GUI thread.
void PaintOn(QImage& picture, const ObjectList& vctObjects, bool bOwnColors);
/// See ToImage; the picture is released as soon as it is converted. Any thread.
std::shared_ptr<Vantor::Algorithms::CImage> ToImage(QImage&& picture);

/// A document of one page, see ToPdf.
class CPdf
{
public:
    CPdf(); ///< GUI thread
    ~CPdf();
    CPdf(const CPdf&) = delete;
    CPdf& operator=(const CPdf&) = delete;

    /// Begins with the image. Any thread. @return false for an empty image or lack of memory
    bool Begin(const Vantor::Algorithms::CImage& image);
    /// Adds the annotations and ends the document. GUI thread. @return whether it is whole
    bool Paint(const ObjectList& vctObjects, bool bOwnColors);
    const QByteArray& GetBytes() const { return m_bytes; }

private:
    const int m_nDpi; ///< at which letters have their size on the screen
    QSize m_size;     ///< of the image, in pixels
    QByteArray m_bytes;
    QBuffer m_buffer;
    std::unique_ptr<QPdfWriter> m_pWriter;
    QPainter m_painter; ///< on the writer
};
} // namespace BurnIn
