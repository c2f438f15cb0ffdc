// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QSizeF>

#include <memory>

namespace Poppler
{
class Document;
}

namespace Vantor::Utils
{

struct SPdfRequest;

/// A document as the renderer, poppler, has read it.
class CPdfDocument
{
public:
    CPdfDocument();
    ~CPdfDocument();
    CPdfDocument(const CPdfDocument&) = delete;
    CPdfDocument& operator=(const CPdfDocument&) = delete;

    /// Reads a document, once.
    /// @param bytes     stay as they are while the document lives
    /// @param password  in UTF-8
    /// @return a CPDFReader::EReadResult
    int Read(const QByteArray& bytes, const QByteArray& password);

    /// At least 1 after EReadResult_OK, otherwise 0.
    int GetPageNumber() const;

    /// The size of a page in points (1/72 inch), finite; 0 x 0 for a page that cannot be read.
    QSizeF GetPageSize(int page) const;

    /// Draws a page on white.
    /// @param request  what to draw; its sizes fit the pixels
    /// @param pPixels  nStride nHeight bytes, three for each pixel: R, G, B
    /// @return false when the page cannot be drawn; the pixels then stay
    bool Render(const SPdfRequest& request, unsigned char* pPixels) const;

private:
    bool Unlock(const QByteArray& password);

    std::unique_ptr<Poppler::Document> m_pDocument;
};

} // namespace Vantor::Utils
