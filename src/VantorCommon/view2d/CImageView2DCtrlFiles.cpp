// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlFiles_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrlImages_p.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QInputDialog>
#include <QMessageBox>
#include <QRegExp>
#include <filesystem>
#include <fstream>
#include <optional>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr double kDefaultResolution = 144.0; // dots per inch
constexpr int kDocumentHead = 1024;          // bytes within which the header of a document stands

/// Deliberate: any character followed by "pdf" or "PDF", anywhere in the path.
bool LooksLikePdf(const QString& strPath)
{
    return strPath.contains(QRegExp(QStringLiteral(".pdf|.PDF"), Qt::CaseSensitive, QRegExp::RegExp));
}

/// Whether the file begins as a PDF document does; nothing if it cannot be read. Readers of documents allow
/// some bytes before the header.
std::optional<bool> BeginsAsPdf(const QString& strPath)
{
    // With the standard library, because Qt would encode the path in the locale's encoding, not in UTF-8.
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

/// @param bTried  whether the user gave a password and it did not open the document
QString WhyUnreadable(const CPDFReader& reader, int nResult, bool bTried)
{
    if (nResult != CPDFReader::EReadResult_PasswordRequired)
        return QString::fromStdString(reader.GetFailureReason());
    return bTried ? QStringLiteral("The password is wrong.")
                  : QStringLiteral("The document needs a password.");
}

QString ReasonOf(const CImage& image)
{
    return QString::fromStdString(image.GetFailureReason());
}
} // namespace

/// Emits the failure of an operation, in addition to its log line.
void CImageView2DCtrlFiles::Fail(const QString& strWhat, const QString& strReason)
{
    Q_EMIT m_context.pCtrl->signal_Failed(strWhat + QLatin1Char(' ') + strReason);
}

/// Opens the document, with a password from the user if it needs one. @return whether its pages can be
/// rendered
bool CImageView2DCtrlFiles::ReadDocument(CPDFReader& reader, const QString& strPath)
{
    // View and controller may be destroyed while the dialog is open.
    const QPointer<CImageView2D> pParent = m_context.pView;
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
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
        return pCtrl;
    CLogger::Write(ERROR, "Cannot load pdf file %s", qUtf8Printable(strPath));
    if (pCtrl)
        Fail(QStringLiteral("Cannot load pdf file %1.").arg(strPath),
             WhyUnreadable(reader, nResult, bPasswordGiven));
    if (bPasswordGiven)
        TellUnreadablePdf(strPath, pParent);
    return false;
}

void CImageView2DCtrlFiles::Load(const QString& strPath)
{
    if (!m_context.pModel || strPath.isEmpty())
        return;
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const std::vector<ImagePtr> vctImages = LoadAny(strPath);
    if (pCtrl)
        ReplaceImages(vctImages, strPath);
}

bool CImageView2DCtrlFiles::IsDocument(const QString& strPath) const
{
    const std::optional<bool> bContent =
        m_context.sOptions.bReaderByContent ? BeginsAsPdf(strPath) : std::optional<bool>();
    return bContent.value_or(LooksLikePdf(strPath));
}

std::vector<CImageView2DCtrlFiles::ImagePtr> CImageView2DCtrlFiles::LoadAny(const QString& strPath)
{
    return IsDocument(strPath) ? LoadPDF(strPath) : LoadImage(strPath);
}

void CImageView2DCtrlFiles::ReplaceImages(const std::vector<ImagePtr>& vctImages, const QString& strPath)
{
    const bool bLoaded = !vctImages.empty();
    if (!m_context.pModel || (!bLoaded && m_context.sOptions.bKeepOnFailedLoad))
        return;
    // Deliberate: a failed load leaves an empty list.
    m_images.ReplaceAll(vctImages);
    if (bLoaded)
        Q_EMIT m_context.pCtrl->signal_FileOpened(strPath);
}

std::vector<CImageView2DCtrlFiles::ImagePtr> CImageView2DCtrlFiles::LoadImage(const QString& strPath)
{
    auto pImage = std::make_shared<CImage>();
    if (pImage->Load(strPath.toStdWString()) == 0)
        return {std::move(pImage)};
    CLogger::Write(ERROR, "Cannot load image %s", qUtf8Printable(strPath));
    Fail(QStringLiteral("Cannot load image %1.").arg(strPath), ReasonOf(*pImage));
    return {};
}

std::vector<CImageView2DCtrlFiles::ImagePtr> CImageView2DCtrlFiles::LoadPDF(const QString& strPath)
{
    const int nSlash = strPath.lastIndexOf(QLatin1Char('/'));
    const std::wstring strFolder = strPath.left(std::max(nSlash, 0)).toStdWString();
    const std::wstring strName = strPath.mid(nSlash + 1).toStdWString();

    CPDFReader reader;
    reader.SetResolutionX(
        CSettingManager::GetDouble(CSettingManager::kLoaderResolutionX, kDefaultResolution));
    // Deliberate: the Y setting also goes to X and overwrites it; Y itself is never set.
    reader.SetResolutionX(
        CSettingManager::GetDouble(CSettingManager::kLoaderResolutionY, kDefaultResolution));
    if (!ReadDocument(reader, strPath))
        return {};

    std::vector<ImagePtr> vctPages;
    const int nPages = reader.GetPageNumber();
    Q_EMIT m_context.pCtrl->signal_ChangeProgressMaxRange(nPages);
    for (int i = 0; i < nPages; ++i) {
        Q_EMIT m_context.pCtrl->signal_ChangeProgressValue(i);
        auto pPage = std::make_shared<CImage>();
        if (reader.RenderPage(i, pPage.get()) != 0) {
            Fail(QStringLiteral("Cannot load all of pdf file %1.").arg(strPath),
                 QStringLiteral("Page %1 of %2 cannot be rendered. ").arg(i + 1).arg(nPages) +
                     QString::fromStdString(reader.GetFailureReason()));
            break;
        }
        pPage->SetName(strName);
        pPage->SetFolder(strFolder);
        vctPages.push_back(std::move(pPage));
    }
    Q_EMIT m_context.pCtrl->signal_ChangeProgressValue(nPages);
    return vctPages;
}

void CImageView2DCtrlFiles::Add(const QString& strPath)
{
    if (!m_context.pModel || strPath.isEmpty())
        return;
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const std::vector<ImagePtr> vctImages = LoadAny(strPath);
    if (!pCtrl || vctImages.empty())
        return;
    const int nFirst = m_context.pModel->GetImageCount();
    for (const ImagePtr& pImage : vctImages)
        m_images.Push(pImage);
    m_context.pModel->SetCurrentIndex(nFirst);
    Q_EMIT m_context.pCtrl->signal_FileOpened(strPath);
}

void CImageView2DCtrlFiles::Save(const QString& strPath)
{
    const ImagePtr pImage = m_images.Current();
    if (!pImage || strPath.isEmpty())
        return;
    if (pImage->Save(strPath.toStdWString()) == 0) {
        Q_EMIT m_context.pCtrl->signal_FileSaved(strPath);
        return;
    }
    CLogger::Write(ERROR, "Cannot save image %s", qUtf8Printable(strPath));
    Fail(QStringLiteral("Cannot save image %1.").arg(strPath), ReasonOf(*pImage));
}

void CImageView2DCtrlFiles::AskAndLoad()
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const QString strPath = ImageFileDialogs::ChooseFile(m_context.pView, QStringLiteral("Load File"),
                                                         ImageFileDialogs::FilesFilter());
    if (pCtrl)
        Load(strPath);
}

void CImageView2DCtrlFiles::AskAndLoadImage()
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const QString strPath = ImageFileDialogs::ChooseFile(m_context.pView, QStringLiteral("Load Image"),
                                                         ImageFileDialogs::ImagesFilter());
    if (pCtrl && !strPath.isEmpty())
        ReplaceImages(LoadImage(strPath), strPath);
}

void CImageView2DCtrlFiles::AskAndLoadPdf()
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const QString strPath = ImageFileDialogs::ChooseFile(m_context.pView, QStringLiteral("Load PDF File"),
                                                         ImageFileDialogs::PdfFilter());
    if (!pCtrl || strPath.isEmpty())
        return;
    const std::vector<ImagePtr> vctPages = LoadPDF(strPath);
    if (pCtrl)
        ReplaceImages(vctPages, strPath);
}

void CImageView2DCtrlFiles::AskAndAdd()
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const QStringList lstPaths = ImageFileDialogs::ChooseFiles(m_context.pView, QStringLiteral("Add Images"),
                                                               ImageFileDialogs::FilesFilter());
    for (const QString& strPath : lstPaths)
        if (pCtrl)
            Add(strPath);
}

void CImageView2DCtrlFiles::AskAndSave()
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const ImagePtr pImage = m_images.Current();
    const bool bPropose = m_context.sOptions.bProposeSaveName && pImage;
    const QString strPath = bPropose ? ImageFileDialogs::ChooseImageToSave(
                                           m_context.pView, QString::fromStdWString(pImage->GetFolder()),
                                           QString::fromStdWString(pImage->GetName()))
                                     : ImageFileDialogs::ChooseImageToSave(m_context.pView);
    if (pCtrl)
        Save(strPath);
}
