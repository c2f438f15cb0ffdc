// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/EngineModule_p.h>
#include <Vantor/pdf/CPDFReader.h>
#include <Vantor/pdf/PdfEngine_p.h>

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QVariant>

#include <memory>

#include <poppler-qt5.h>

namespace Vantor::Utils
{

namespace
{
using DocumentPtr = std::unique_ptr<Poppler::Document>;
using PagePtr = std::unique_ptr<Poppler::Page>;

/// Drops the renderer's messages about damaged documents, which otherwise go to standard error. The setting
/// applies to the whole process.
void SilenceRenderer()
{
    static const bool bDone = [] {
        Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, QVariant());
        return true;
    }();
    Q_UNUSED(bDone)
}

/// Old documents hold the password as Latin-1, new ones as UTF-8; it may be the user's or the owner's.
bool Unlock(Poppler::Document& document, const std::wstring& password)
{
    const QString strPassword = QString::fromStdWString(password);
    const QByteArray utf8 = strPassword.toUtf8();
    if (!document.unlock(utf8, utf8)) // it returns whether the document is still locked
        return true;
    const QByteArray latin1 = strPassword.toLatin1();
    const bool bExact = QString::fromLatin1(latin1) == strPassword; // otherwise it holds question marks
    return bExact && latin1 != utf8 && !document.unlock(latin1, latin1);
}

/// IPdfEngine over poppler.
class CPdfEngine : public IPdfEngine
{
public:
    int Read(const QByteArray& bytes, const std::wstring& password) override;
    int GetPageNumber() const override { return m_pDocument->numPages(); }
    QSizeF GetPageSize(int page) const override;
    bool Render(int page, double dpiX, double dpiY, int width, int height) override;
    void TakeDrawing(unsigned char* const* rows) override;

private:
    DocumentPtr m_pDocument;
    QImage m_drawing;
};

int CPdfEngine::Read(const QByteArray& bytes, const std::wstring& password)
{
    m_pDocument.reset(Poppler::Document::loadFromData(bytes));
    if (!m_pDocument)
        return CPDFReader::EReadResult_NotAPdf;
    if (m_pDocument->isLocked() && !Unlock(*m_pDocument, password))
        return CPDFReader::EReadResult_PasswordRequired;
    if (m_pDocument->numPages() < 1)
        return CPDFReader::EReadResult_NotAPdf;
    m_pDocument->setRenderHint(Poppler::Document::Antialiasing);
    m_pDocument->setRenderHint(Poppler::Document::TextAntialiasing);
    return CPDFReader::EReadResult_OK;
}

QSizeF CPdfEngine::GetPageSize(int page) const
{
    const PagePtr pPage(m_pDocument->page(page));
    return pPage ? pPage->pageSizeF() : QSizeF();
}

bool CPdfEngine::Render(int page, double dpiX, double dpiY, int width, int height)
{
    const PagePtr pPage(m_pDocument->page(page));
    m_drawing = pPage ? pPage->renderToImage(dpiX, dpiY, 0, 0, width, height) : QImage();
    return m_drawing.size() == QSize(width, height) &&
           (m_drawing.format() == QImage::Format_RGB32 || m_drawing.format() == QImage::Format_ARGB32);
}

void CPdfEngine::TakeDrawing(unsigned char* const* rows)
{
    for (int y = 0; y < m_drawing.height(); ++y) {
        const auto* pFrom = reinterpret_cast<const QRgb*>(m_drawing.constScanLine(y));
        unsigned char* pTo = rows[y];
        for (int x = 0; x < m_drawing.width(); ++x, pTo += 3) {
            pTo[0] = static_cast<unsigned char>(qRed(pFrom[x]));
            pTo[1] = static_cast<unsigned char>(qGreen(pFrom[x]));
            pTo[2] = static_cast<unsigned char>(qBlue(pFrom[x]));
        }
    }
    m_drawing = QImage();
}
} // namespace

VANTOR_ENGINE_FUNCTION IPdfEngine* VantorMakePdfEngine()
{
    SilenceRenderer();
    return new CPdfEngine;
}

} // namespace Vantor::Utils
