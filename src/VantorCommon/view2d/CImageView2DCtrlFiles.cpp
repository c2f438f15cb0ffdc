// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlFiles_p.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrlImages_p.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QUrl>

using namespace ImageFileLoad;
using Vantor::Algorithms::CImage;

namespace
{
constexpr double kDefaultResolution = 144.0; // dots per inch

void TellUnreadablePdf(const QString& strPath, QWidget* pParent)
{
    auto* pBox =
        new QMessageBox(QMessageBox::Critical, QString(),
                        QStringLiteral("Cannot load pdf file %1").arg(strPath), QMessageBox::Ok, pParent);
    pBox->setTextFormat(Qt::PlainText);
    pBox->setAttribute(Qt::WA_DeleteOnClose);
    pBox->open();
}

SRequest RequestOf(const QString& strPath, EReader eReader)
{
    SRequest request;
    request.strPath = strPath;
    request.eReader = eReader;
    request.dblResolutionX =
        CSettingManager::GetDouble(CSettingManager::kLoaderResolutionX, kDefaultResolution);
    request.dblResolutionY =
        CSettingManager::GetDouble(CSettingManager::kLoaderResolutionY, kDefaultResolution);
    return request;
}

/// On any thread. The log tells a failure also when the controller has gone by then.
/// @return why it could not be saved; empty for a success
QString SaveAs(const CImage& image, const QString& strPath)
{
    if (image.Save(strPath.toStdWString()) == 0)
        return {};
    if (!Vantor::CProgress::IsThreadCancelled())
        CLogger::Write(ERROR, "Cannot save image %s", qUtf8Printable(strPath));
    return QString::fromStdString(image.GetFailureReason());
}
} // namespace

CImageView2DCtrlFiles::CImageView2DCtrlFiles(const SImageView2DCtrlContext& context,
                                             CImageView2DCtrlImages& images)
    : m_context(context), m_images(images),
      m_openings(context,
                 [this](SOpening& opening, const SLoaded& loaded) { return ShowLater(opening, loaded); })
{
}

/// By the path or the first bytes, as the options say.
EReader CImageView2DCtrlFiles::Reader() const
{
    return m_context.sOptions.bReaderByContent ? EReader_Content : EReader_Path;
}

/// Asks for the password of a document. The view may go meanwhile, and the controller.
/// @return whether one was given
bool CImageView2DCtrlFiles::AskPassword(SRequest& request) const
{
    request.strPassword = QInputDialog::getText(m_context.pView, QStringLiteral("Input the password"),
                                                QStringLiteral("Password"), QLineEdit::Password, QString(),
                                                &request.bPasswordGiven);
    return request.bPasswordGiven;
}

/// What did not come, in the log, by signal_Failed and, after a password, in a box.
void CImageView2DCtrlFiles::Tell(const SRequest& request, const SLoaded& loaded)
{
    const QPointer<CImageView2D> pParent = m_context.pView;
    if (!loaded.strLog.isEmpty())
        CLogger::Write(ERROR, "%s", qUtf8Printable(loaded.strLog));
    if (!loaded.strFailure.isEmpty())
        Q_EMIT m_context.pCtrl->signal_Failed(loaded.strFailure);
    if (!loaded.strLog.isEmpty() && request.bPasswordGiven)
        TellUnreadablePdf(request.strPath, pParent);
}

/// Reads a file while the caller waits; empty, too, when the controller has gone meanwhile.
std::vector<CImageView2DCtrlFiles::ImagePtr> CImageView2DCtrlFiles::Read(SRequest request)
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const auto pages = [pCtrl](int nDone, int nPages) {
        if (nDone == 0 && pCtrl)
            Q_EMIT pCtrl->signal_ChangeProgressMaxRange(nPages);
        if (pCtrl)
            Q_EMIT pCtrl->signal_ChangeProgressValue(nDone);
    };
    request.bDeferred = m_context.sOptions.bDeferredPages;
    SLoaded loaded = ImageFileLoad::Load(request, pages);
    const QPointer<CImageView2D> pParent = m_context.pView;
    if (loaded.bNeedsPassword && AskPassword(request))
        loaded = ImageFileLoad::Load(request, pages);
    if (!pCtrl) {
        if (!loaded.strLog.isEmpty() && request.bPasswordGiven)
            TellUnreadablePdf(request.strPath, pParent);
        return {};
    }
    Tell(request, loaded);
    return loaded.vctImages;
}

void CImageView2DCtrlFiles::Open(SOpening opening)
{
    if (!m_context.pModel || (opening.request.strPath.isEmpty() && opening.request.strPasted.isEmpty()))
        return;
    if (m_context.sOptions.bBackground) {
        opening.request.bDeferred = m_context.sOptions.bDeferredPages;
        m_openings.Start(std::move(opening));
        return;
    }
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const std::vector<ImagePtr> vctImages = Read(opening.request);
    if (pCtrl)
        Show(opening, vctImages);
}

void CImageView2DCtrlFiles::Show(const SOpening& opening, const std::vector<ImagePtr>& vctImages)
{
    if (!opening.request.strPasted.isEmpty())
        PushAll(vctImages);
    else if (opening.bReplace)
        Replace(vctImages, opening.request.strPath);
    else
        Append(vctImages, opening.request.strPath);
}

/// What a job has read. Steps that were taken meanwhile are not thrown away: the images come behind the list.
/// @return false when the document is to be read again, with a password
bool CImageView2DCtrlFiles::ShowLater(SOpening& opening, const SLoaded& loaded)
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    if (loaded.bNeedsPassword && AskPassword(opening.request) && pCtrl)
        return false;
    if (!pCtrl)
        return true;
    Tell(opening.request, loaded);
    if (!pCtrl)
        return true;
    opening.bReplace = opening.bReplace && opening.nSteps == m_context.nSteps;
    Show(opening, loaded.vctImages);
    return true;
}

void CImageView2DCtrlFiles::Load(const QString& strPath)
{
    Open({RequestOf(strPath, Reader()), true, m_context.nSteps});
}

void CImageView2DCtrlFiles::Add(const QString& strPath)
{
    Open({RequestOf(strPath, Reader()), false, m_context.nSteps});
}

/// Deliberate: every file, even a PDF document, is read as an image, and failures are not logged.
void CImageView2DCtrlFiles::Paste(const QUrl& url)
{
    SRequest request = RequestOf(url.toLocalFile(), EReader_Image);
    request.strPasted = url.toDisplayString();
    Open({request, false, m_context.nSteps});
}

std::vector<CImageView2DCtrlFiles::ImagePtr> CImageView2DCtrlFiles::LoadImage(const QString& strPath)
{
    return Read(RequestOf(strPath, EReader_Image));
}

std::vector<CImageView2DCtrlFiles::ImagePtr> CImageView2DCtrlFiles::LoadPDF(const QString& strPath)
{
    return Read(RequestOf(strPath, EReader_Document));
}

void CImageView2DCtrlFiles::CancelJobs()
{
    m_openings.CancelAll();
}

void CImageView2DCtrlFiles::Replace(const std::vector<ImagePtr>& vctImages, const QString& strPath)
{
    const bool bLoaded = !vctImages.empty();
    if (!m_context.pModel || (!bLoaded && m_context.sOptions.bKeepOnFailedLoad))
        return;
    // Deliberate: a load that failed leaves an empty list.
    m_images.ReplaceAll(vctImages);
    if (bLoaded)
        Q_EMIT m_context.pCtrl->signal_FileOpened(strPath);
}

void CImageView2DCtrlFiles::Append(const std::vector<ImagePtr>& vctImages, const QString& strPath)
{
    if (!m_context.pModel || vctImages.empty())
        return;
    const int nFirst = m_context.pModel->GetImageCount();
    for (const ImagePtr& pImage : vctImages)
        m_images.Push(pImage);
    m_context.pModel->SetCurrentIndex(nFirst);
    Q_EMIT m_context.pCtrl->signal_FileOpened(strPath);
}

/// Whoever hears of an image may delete the controller.
void CImageView2DCtrlFiles::PushAll(const std::vector<ImagePtr>& vctImages)
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    for (const ImagePtr& pImage : vctImages)
        if (pCtrl)
            pCtrl->PushImage(pImage);
}

void CImageView2DCtrlFiles::Save(const QString& strPath)
{
    const ImagePtr pImage = m_images.Current();
    if (!pImage || strPath.isEmpty())
        return;
    if (!m_context.sOptions.bBackground)
        return TellSaved(*pImage, strPath, SaveAs(*pImage, strPath));
    SJob sJob;
    sJob.strKind = QStringLiteral("save ") + strPath;
    sJob.strTitle = QStringLiteral("Save %1").arg(QFileInfo(strPath).fileName());
    sJob.bMustFinish = true;
    CJobs::Get().Start(m_context.pCtrl, sJob, [=](Vantor::CProgress&) -> CJob::Finish {
        const QString strReason = SaveAs(*pImage, strPath);
        return [=] { TellSaved(*pImage, strPath, strReason); };
    });
}

/// @param strReason  why it could not be saved; empty for a success
void CImageView2DCtrlFiles::TellSaved(const CImage& image, const QString& strPath, const QString& strReason)
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    if (!strReason.isEmpty()) {
        Q_EMIT pCtrl->signal_Failed(QStringLiteral("Cannot save image %1. %2").arg(strPath, strReason));
        return;
    }
    const unsigned int nUID = image.GetUID();
    Q_EMIT pCtrl->signal_ImageSaved(strPath, nUID);
    if (pCtrl)
        Q_EMIT pCtrl->signal_FileSaved(strPath);
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
    if (pCtrl)
        Open({RequestOf(strPath, EReader_Image), true, m_context.nSteps});
}

void CImageView2DCtrlFiles::AskAndLoadPdf()
{
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    const QString strPath = ImageFileDialogs::ChooseFile(m_context.pView, QStringLiteral("Load PDF File"),
                                                         ImageFileDialogs::PdfFilter());
    if (pCtrl)
        Open({RequestOf(strPath, EReader_Document), true, m_context.nSteps});
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
