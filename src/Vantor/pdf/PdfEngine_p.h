// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

class QByteArray;
class QSizeF;

namespace Vantor::Utils
{

/// The PDF engine with the document that it has read. One thread at a time uses an engine; several may work
/// on several threads.
class IPdfEngine
{
public:
    IPdfEngine() = default;
    virtual ~IPdfEngine() = default;
    IPdfEngine(const IPdfEngine&) = delete;
    IPdfEngine& operator=(const IPdfEngine&) = delete;

    /// Reads a document, once.
    /// @return a CPDFReader::EReadResult; there are pages only after EReadResult_OK
    virtual int Read(const QByteArray& bytes, const std::wstring& password) = 0;

    virtual int GetPageNumber() const = 0;

    /// The size of a page in points (1/72 inch); empty for a page that cannot be read.
    virtual QSizeF GetPageSize(int page) const = 0;

    /// Draws a page on white and keeps the drawing until it is taken.
    /// @param width, height  in pixels
    /// @return false when the page cannot be drawn
    virtual bool Render(int page, double dpiX, double dpiY, int width, int height) = 0;
    /// Hands out the drawing of a Render that succeeded, and forgets it.
    /// @param rows  as many as the drawing is high, each for its width in pixels of three bytes, R, G, B
    virtual void TakeDrawing(unsigned char* const* rows) = 0;
};

/// The module and its function that makes an engine, which the caller owns.
constexpr const char* kPdfModule = "vantor-pdf.so";
constexpr const char* kPdfFunction = "VantorMakePdfEngine";

} // namespace Vantor::Utils
