// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The file and clipboard half of CImageView2DCtrl.
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CUtilManager.h>
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QRegExp>
#include <QUrl>
#include <filesystem>
#include <fstream>
#include <optional>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr double kDefaultResolution = 144.0; // dots per inch
constexpr int kDocumentHead = 1024;          // bytes in which the header of a document stands

/// Deliberate: any character followed by "pdf" or "PDF", anywhere in the path.
bool LooksLikePdf(const QString& strPath)
{
    return strPath.contains(QRegExp(QStringLiteral(".pdf|.PDF"), Qt::CaseSensitive, QRegExp::RegExp));
}

/// Whether the file begins as a PDF document does; nothing when it cannot be read. Readers of documents allow
/// for some bytes in front of the header.
std::optional<bool> BeginsAsPdf(const QString& strPath)
{
    // By the standard library: Qt would encode the path as the locale says, not as UTF-8.
    const std::filesystem::path path = std::filesystem::u8path(strPath.toStdString());
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) // opening a FIFO would wait for its other end
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    QByteArray head(kDocumentHead, '\0');
    file.read(head.data(), head.size());
    return head.contains("%PDF-");
}

void TellUnreadablePdf(const QString& strPath, QWidget* pParent)
{
    auto* pBox =
        new QMessageBox(QMessageBox::Critical, QString(),
                        QStringLiteral("Cannot load pdf file %1").arg(strPath), QMessageBox::Ok, pParent);
    pBox->setTextFormat(Qt::PlainText);
    pBox->setAttribute(Qt::WA_DeleteOnClose);
    pBox->open();
}

/// @param bTried  whether a password was given that did not open it
QString WhyUnreadable(int nResult, bool bTried)
{
    switch (nResult) {
    case CPDFReader::EReadResult_CannotOpen:
        return QStringLiteral("The file is missing, no regular file, or must not be read.");
    case CPDFReader::EReadResult_NoMemory:
        return QStringLiteral("The document is too large for the memory.");
    case CPDFReader::EReadResult_PasswordRequired:
        return bTried ? QStringLiteral("The password is wrong.")
                      : QStringLiteral("The document needs a password.");
    default:
        return QStringLiteral("It is not a PDF document with pages, or it is damaged.");
    }
}

QString ReasonOf(const CImage& image)
{
    return QString::fromStdString(image.GetFailureReason());
}
} // namespace

/// The failure of something that was asked for, beside what the log says of it.
void CImageView2DCtrl::Fail(const QString& strWhat, const QString& strReason)
{
    Q_EMIT signal_Failed(strWhat + QLatin1Char(' ') + strReason);
}

/// Opens the document, with a password from the user where it wants one. True when its pages can be had.
bool CImageView2DCtrl::ReadDocument(CPDFReader& reader, const QString& strPath)
{
    // View and controller may go while the user is asked.
    const QPointer<CImageView2D> pParent = m_pView;
    const QPointer<CImageView2DCtrl> pThis = this;
    int nResult = reader.Read(strPath.toStdWString(), std::wstring());
    bool bPasswordGiven = false;
    if (nResult == CPDFReader::EReadResult_PasswordRequired) {
        const QString strPassword =
            QInputDialog::getText(pParent, QStringLiteral("Input the password"), QStringLiteral("Password"),
                                  QLineEdit::Password, QString(), &bPasswordGiven);
        if (bPasswordGiven)
            nResult = reader.Read(strPath.toStdWString(), strPassword.toStdWString());
    }
    if (nResult == CPDFReader::EReadResult_OK && reader.GetPageNumber() > 0)
        return pThis;
    CLogger::Write(ERROR, "Cannot load pdf file %s", qUtf8Printable(strPath));
    if (pThis)
        Fail(QStringLiteral("Cannot load pdf file %1.").arg(strPath), WhyUnreadable(nResult, bPasswordGiven));
    if (bPasswordGiven)
        TellUnreadablePdf(strPath, pParent);
    return false;
}

void CImageView2DCtrl::LoadFile(const QString& strPath)
{
    if (!m_pModel || strPath.isEmpty())
        return;
    const QPointer<CImageView2DCtrl> pThis = this;
    const std::vector<ImagePtr> vctImages = LoadAny(strPath);
    if (pThis)
        ReplaceImages(vctImages, strPath);
}

bool CImageView2DCtrl::IsDocument(const QString& strPath) const
{
    const std::optional<bool> bContent =
        m_sOptions.bReaderByContent ? BeginsAsPdf(strPath) : std::optional<bool>();
    return bContent.value_or(LooksLikePdf(strPath));
}

std::vector<CImageView2DCtrl::ImagePtr> CImageView2DCtrl::LoadAny(const QString& strPath)
{
    return IsDocument(strPath) ? LoadPDF(strPath) : LoadImage(strPath);
}

void CImageView2DCtrl::ReplaceImages(const std::vector<ImagePtr>& vctImages, const QString& strPath)
{
    const bool bLoaded = !vctImages.empty();
    if (!m_pModel || (!bLoaded && m_sOptions.bKeepOnFailedLoad))
        return;
    // Deliberate: a load that failed leaves an empty list.
    m_pModel->SetImages(vctImages);
    m_pStore->Clear(EAnnotationsGone_Loaded);
    if (bLoaded)
        Q_EMIT signal_FileOpened(strPath);
}

std::vector<CImageView2DCtrl::ImagePtr> CImageView2DCtrl::LoadImage(const QString& strPath)
{
    auto pImage = std::make_shared<CImage>();
    if (pImage->Load(strPath.toStdWString()) == 0)
        return {std::move(pImage)};
    CLogger::Write(ERROR, "Cannot load image %s", qUtf8Printable(strPath));
    Fail(QStringLiteral("Cannot load image %1.").arg(strPath), ReasonOf(*pImage));
    return {};
}

std::vector<CImageView2DCtrl::ImagePtr> CImageView2DCtrl::LoadPDF(const QString& strPath)
{
    const int nSlash = strPath.lastIndexOf(QLatin1Char('/'));
    const std::wstring strFolder = strPath.left(std::max(nSlash, 0)).toStdWString();
    const std::wstring strName = strPath.mid(nSlash + 1).toStdWString();

    CPDFReader reader;
    reader.SetResolutionX(CSettingManager::GetDouble(QStringLiteral("PDF_RESOLUTION_X"), kDefaultResolution));
    // Deliberate: the Y setting goes to X, too, and overwrites it; Y itself is never set.
    reader.SetResolutionX(CSettingManager::GetDouble(QStringLiteral("PDF_RESOLUTION_Y"), kDefaultResolution));
    if (!ReadDocument(reader, strPath))
        return {};

    std::vector<ImagePtr> vctPages;
    const int nPages = reader.GetPageNumber();
    Q_EMIT signal_ChangeProgressMaxRange(nPages);
    for (int i = 0; i < nPages; ++i) {
        Q_EMIT signal_ChangeProgressValue(i);
        auto pPage = std::make_shared<CImage>();
        if (reader.RenderPage(i, pPage.get()) != 0) {
            Fail(QStringLiteral("Cannot load all of pdf file %1.").arg(strPath),
                 QStringLiteral("Page %1 of %2 cannot be rendered.").arg(i + 1).arg(nPages));
            break;
        }
        pPage->SetName(strName);
        pPage->SetFolder(strFolder);
        vctPages.push_back(std::move(pPage));
    }
    Q_EMIT signal_ChangeProgressValue(nPages);
    return vctPages;
}

void CImageView2DCtrl::AddImage(const QString& strPath)
{
    if (!m_pModel || strPath.isEmpty())
        return;
    const QPointer<CImageView2DCtrl> pThis = this;
    const std::vector<ImagePtr> vctImages = LoadAny(strPath);
    if (!pThis || vctImages.empty())
        return;
    const int nFirst = m_pModel->GetImageCount();
    for (const ImagePtr& pImage : vctImages)
        PushImage(pImage);
    m_pModel->SetCurrentIndex(nFirst);
    Q_EMIT signal_FileOpened(strPath);
}

void CImageView2DCtrl::SaveFile(const QString& strPath)
{
    const ImagePtr pImage = GetCurrentImgage();
    if (!pImage || strPath.isEmpty())
        return;
    if (pImage->Save(strPath.toStdWString()) == 0) {
        Q_EMIT signal_FileSaved(strPath);
        return;
    }
    CLogger::Write(ERROR, "Cannot save image %s", qUtf8Printable(strPath));
    Fail(QStringLiteral("Cannot save image %1.").arg(strPath), ReasonOf(*pImage));
}

void CImageView2DCtrl::slot_LoadFile()
{
    LoadFile(
        ImageFileDialogs::ChooseFile(m_pView, QStringLiteral("Load File"), ImageFileDialogs::FilesFilter()));
}

void CImageView2DCtrl::slot_LoadImage()
{
    const QString strPath =
        ImageFileDialogs::ChooseFile(m_pView, QStringLiteral("Load Image"), ImageFileDialogs::ImagesFilter());
    if (!strPath.isEmpty())
        ReplaceImages(LoadImage(strPath), strPath);
}

void CImageView2DCtrl::slot_LoadPdf()
{
    const QString strPath =
        ImageFileDialogs::ChooseFile(m_pView, QStringLiteral("Load PDF File"), ImageFileDialogs::PdfFilter());
    if (strPath.isEmpty())
        return;
    const QPointer<CImageView2DCtrl> pThis = this;
    const std::vector<ImagePtr> vctPages = LoadPDF(strPath);
    if (pThis)
        ReplaceImages(vctPages, strPath);
}

void CImageView2DCtrl::slot_AddImage()
{
    const QStringList lstPaths =
        ImageFileDialogs::ChooseFiles(m_pView, QStringLiteral("Add Images"), ImageFileDialogs::FilesFilter());
    for (const QString& strPath : lstPaths)
        AddImage(strPath);
}

void CImageView2DCtrl::slot_AddImageDragDrop(const QString& strPath)
{
    AddImage(strPath);
}

void CImageView2DCtrl::slot_SaveImage()
{
    const ImagePtr pImage = GetCurrentImgage();
    if (!m_sOptions.bProposeSaveName || !pImage)
        return SaveFile(ImageFileDialogs::ChooseImageToSave(m_pView));
    const QString strFolder = QString::fromStdWString(pImage->GetFolder());
    SaveFile(
        ImageFileDialogs::ChooseImageToSave(m_pView, strFolder, QString::fromStdWString(pImage->GetName())));
}

void CImageView2DCtrl::CopyToClipBoard()
{
    const ImagePtr pImage = GetCurrentImgage();
    QImage image;
    if (pImage && CUtilManager::ConvertImage(pImage.get(), image, true))
        QGuiApplication::clipboard()->setImage(image);
}

void CImageView2DCtrl::slot_Copy()
{
    CopyToClipBoard();
}

void CImageView2DCtrl::slot_Paste()
{
    const QMimeData* pData = QGuiApplication::clipboard()->mimeData();
    if (!pData)
        return;
    if (pData->hasUrls()) {
        PasteUrls(pData->urls());
        return;
    }
    // Deliberate: text wins over an image, and is ignored.
    if (pData->hasText() || !pData->hasImage())
        return;
    // Of an image with fewer than 32 bits a pixel the conversion would take a part only.
    const auto image = qvariant_cast<QImage>(pData->imageData()).convertToFormat(QImage::Format_RGBA8888);
    const auto pImage = std::make_shared<CImage>();
    if (CUtilManager::ConvertImage(image, pImage.get()))
        PushImage(pImage);
}

/// Deliberate: every file is taken for an image, also a PDF document, and what does not load is not logged.
void CImageView2DCtrl::PasteUrls(const QList<QUrl>& lstUrls)
{
    for (const QUrl& url : lstUrls) {
        const auto pImage = std::make_shared<CImage>();
        const QString strPath = url.toLocalFile();
        if (pImage->Load(strPath.toStdWString()) == 0)
            PushImage(pImage);
        else
            Fail(QStringLiteral("Cannot paste %1.").arg(url.toDisplayString()), ReasonOf(*pImage));
    }
}
