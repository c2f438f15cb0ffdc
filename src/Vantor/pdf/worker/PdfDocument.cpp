// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/worker/PdfDocument_p.h>

#include <Vantor/pdf/CPDFReader.h>
#include <Vantor/pdf/PdfProtocol_p.h>

#include <QImage>
#include <QString>
#include <QVariant>

#include <cmath>
#include <cstring>

#include <poppler-qt5.h>

namespace Vantor::Utils
{

namespace
{
using PagePtr = std::unique_ptr<Poppler::Page>;

bool IsLength(double points)
{
    return std::isfinite(points) && points >= 0.0;
}

void TakePixels(const QImage& drawing, int nStride, unsigned char* pPixels)
{
    const int nWidth = drawing.width(); // no call for each pixel: they took a seventh of the time of a page
    for (int y = 0; y < drawing.height(); ++y) {
        const auto* pFrom = reinterpret_cast<const QRgb*>(drawing.constScanLine(y));
        unsigned char* pTo = pPixels + static_cast<std::size_t>(y) * static_cast<std::size_t>(nStride);
        for (int x = 0; x < nWidth; ++x, pTo += 3) {
            pTo[0] = static_cast<unsigned char>(qRed(pFrom[x]));
            pTo[1] = static_cast<unsigned char>(qGreen(pFrom[x]));
            pTo[2] = static_cast<unsigned char>(qBlue(pFrom[x]));
        }
    }
}
} // namespace

CPdfDocument::CPdfDocument()
{
    // Messages about damaged documents otherwise go to standard error.
    Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, QVariant());
}

CPdfDocument::~CPdfDocument() = default;

/// Old documents hold the password as Latin-1, new ones as UTF-8; it may be the user's or the owner's.
bool CPdfDocument::Unlock(const QByteArray& password)
{
    if (!m_pDocument->unlock(password, password)) // it returns whether the document is still locked
        return true;
    QString strPassword = QString::fromUtf8(password);
    QByteArray latin1 = strPassword.toLatin1();
    const bool bExact = QString::fromLatin1(latin1) == strPassword; // otherwise it holds question marks
    const bool bUnlocked = bExact && latin1 != password && !m_pDocument->unlock(latin1, latin1);
    ::explicit_bzero(strPassword.data(), static_cast<std::size_t>(strPassword.size()) * sizeof(QChar));
    ::explicit_bzero(latin1.data(), static_cast<std::size_t>(latin1.size()));
    return bUnlocked;
}

int CPdfDocument::Read(const QByteArray& bytes, const QByteArray& password)
{
    m_pDocument.reset(Poppler::Document::loadFromData(bytes));
    if (!m_pDocument)
        return CPDFReader::EReadResult_NotAPdf;
    if (m_pDocument->isLocked() && !Unlock(password))
        return CPDFReader::EReadResult_PasswordRequired;
    if (GetPageNumber() < 1)
        return CPDFReader::EReadResult_NotAPdf;
    m_pDocument->setRenderHint(Poppler::Document::Antialiasing);
    m_pDocument->setRenderHint(Poppler::Document::TextAntialiasing);
    return CPDFReader::EReadResult_OK;
}

int CPdfDocument::GetPageNumber() const
{
    return m_pDocument && !m_pDocument->isLocked() ? m_pDocument->numPages() : 0;
}

QSizeF CPdfDocument::GetPageSize(int page) const
{
    const PagePtr pPage(m_pDocument->page(page));
    const QSizeF size = pPage ? pPage->pageSizeF() : QSizeF();
    return IsLength(size.width()) && IsLength(size.height()) ? size : QSizeF(0.0, 0.0);
}

bool CPdfDocument::Render(const SPdfRequest& request, unsigned char* pPixels) const
{
    const PagePtr pPage(m_pDocument->page(request.nPage));
    const QImage drawing =
        pPage ? pPage->renderToImage(request.dDpiX, request.dDpiY, 0, 0, request.nWidth, request.nHeight)
              : QImage();
    if (drawing.size() != QSize(request.nWidth, request.nHeight) ||
        (drawing.format() != QImage::Format_RGB32 && drawing.format() != QImage::Format_ARGB32))
        return false;
    TakePixels(drawing, request.nStride, pPixels);
    return true;
}

} // namespace Vantor::Utils
