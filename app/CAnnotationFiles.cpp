// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CAnnotationFiles.h"

#include "AnnotationDialogs.h"
#include "HostSettings.h"
#include "LibraryTexts.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

using Vantor::Annotations::SDocument;
using Vantor::Annotations::SPage;
using Vantor::Annotations::SReport;

namespace
{
constexpr int kAutoSaveMs = 2000; // after the last step

QString OwnFormat()
{
    return QLatin1String(Vantor::Annotations::kOwnFormat);
}

/// The file that keeps the annotations of an image, of two the newer; empty when there is none.
QString StoredFile(const QString& strImage)
{
    const QFileInfo beside(CAnnotationFiles::Beside(strImage));
    const QFileInfo elsewhere(CAnnotationFiles::InDataFolder(strImage));
    const bool bElsewhere =
        elsewhere.exists() && (!beside.exists() || beside.lastModified() < elsewhere.lastModified());
    if (bElsewhere)
        return elsewhere.filePath();
    return beside.exists() ? beside.filePath() : QString();
}

/// Whether the file, if there is one, is sound and the disk alone has refused it. What is damaged or of a
/// later version stays, and what is in it must not be hidden by another file.
bool IsSoundOrMissing(const QString& strPath)
{
    if (!QFileInfo::exists(strPath))
        return true;
    SDocument document;
    const SReport report =
        Vantor::Annotations::Load(strPath.toStdString(), Vantor::Annotations::kOwnFormat, {}, document);
    return report.failure.empty() && !document.IsReadOnly();
}

bool HasObjects(const SDocument& document)
{
    return std::any_of(document.pages.begin(), document.pages.end(),
                       [](const SPage& page) { return !page.objects.empty(); });
}
} // namespace

CAnnotationFiles::CAnnotationFiles(CImageView2DCtrl* pCtrl)
    : m_pCtrl(pCtrl), m_pStore(pCtrl->GetAnnotationStore())
{
    m_autoSave.setSingleShot(true);
    m_autoSave.setInterval(kAutoSaveMs);
    connect(&m_autoSave, &QTimer::timeout, this, &CAnnotationFiles::AutoSave);
    m_look.setSingleShot(true);
    connect(&m_look, &QTimer::timeout, this, &CAnnotationFiles::LookForStored);
    connect(m_pStore, &CAnnotationStore::signal_StepFinished, this, &CAnnotationFiles::StartAutoSave);
    m_pStore->SetAskSize([this](const SPage& page, const QSize& size) { return AskSize(page, size); });
    connect(pCtrl, &CImageView2DCtrl::signal_FileSaved, this, &CAnnotationFiles::StartAutoSave);
    connect(m_pStore, &CAnnotationStore::signal_Saved, this, &CAnnotationFiles::AfterSaving);
    connect(m_pStore, &CAnnotationStore::signal_Loaded, this, &CAnnotationFiles::AfterLoading);
    connect(pCtrl, &CImageView2DCtrl::signal_FileOpened, this, &CAnnotationFiles::LookForStored);
    // What is pasted as a file is announced by nothing else; the list may be in the middle of a change.
    connect(pCtrl->GetImageModel(), &CImageView2DModel::signal_ChangeImageList, this,
            [this] { m_look.start(0); });
}

int CAnnotationFiles::ImageOf(const QString& strFile) const
{
    const int nCount = strFile.isEmpty() ? 0 : m_pCtrl->GetImageModel()->GetImageCount();
    for (int i = 0; i < nCount; ++i)
        if (m_pStore->GetImageFile(i) == strFile)
            return i;
    return -1;
}

std::vector<int> CAnnotationFiles::Unsaved() const
{
    std::vector<int> vctImages;
    for (int i = 0; i < m_pCtrl->GetImageModel()->GetImageCount(); ++i) {
        const QString strFile = m_pStore->GetImageFile(i);
        if (m_pStore->HasUnsaved(i) && (strFile.isEmpty() || ImageOf(strFile) == i))
            vctImages.push_back(i);
    }
    return vctImages;
}

bool CAnnotationFiles::IsLastWithUnsaved(int nImage) const
{
    if (!m_pStore->HasUnsaved(nImage))
        return false;
    const QString strFile = m_pStore->GetImageFile(nImage);
    for (int i = 0; i < m_pCtrl->GetImageModel()->GetImageCount(); ++i)
        if (i != nImage && !strFile.isEmpty() && m_pStore->GetImageFile(i) == strFile)
            return false;
    return true;
}

QString CAnnotationFiles::DataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/vantor/annotations");
}

QString CAnnotationFiles::Beside(const QString& strImage)
{
    return QString::fromStdString(Vantor::Annotations::SidecarOf(strImage.toStdString()));
}

QString CAnnotationFiles::InDataFolder(const QString& strImage)
{
    const QByteArray hash = QCryptographicHash::hash(strImage.toUtf8(), QCryptographicHash::Sha256).toHex();
    return Beside(DataFolder() + QLatin1Char('/') + QString::fromLatin1(hash));
}

void CAnnotationFiles::Expect(const QString& strImage, const SDocument& document)
{
    m_expected.insert(QFileInfo(strImage).absoluteFilePath(), document);
}

/// A file is looked for when the first of its pages comes.
void CAnnotationFiles::LookForStored()
{
    m_look.stop();
    const QSet<int> known = std::exchange(m_known, {});
    QSet<QString> fresh;
    QSet<QString> old;
    const int nCount = m_pCtrl->GetImageModel()->GetImageCount();
    for (int i = 0; i < nCount; ++i) {
        const int nId = m_pStore->GetPageId(i);
        (known.contains(nId) ? old : fresh).insert(m_pStore->GetImageFile(i));
        m_known.insert(nId);
    }
    fresh.remove(QString());
    m_hidden &= old;
    for (int i = 0; i < nCount; ++i)
        if (const QString strFile = m_pStore->GetImageFile(i);
            fresh.remove(strFile) && !old.contains(strFile))
            ShowStored(i);
}

void CAnnotationFiles::ShowStored(int nImage)
{
    const QString strImage = m_pStore->GetImageFile(nImage);
    const QString strFile = StoredFile(strImage);
    if (m_expected.contains(strImage)) {
        // What the file says beside its pages stays.
        SDocument document;
        const SReport report =
            Vantor::Annotations::Load(strFile.toStdString(), Vantor::Annotations::kOwnFormat, {}, document);
        document.pages = m_expected.take(strImage).pages;
        m_pStore->Apply(document, nImage);
        // Who restores what was not saved knows that the file is older.
        m_pStore->SetKnownFile(strFile, report.digest);
    } else if (!strFile.isEmpty()) {
        m_hidden.insert(strImage);
        SLoading& loading = m_loading[strFile];
        loading.strImage = strImage;
        ++loading.nLoads;
        m_pStore->Load(strFile, nImage);
    }
}

/// The store asks while it loads, and tells the end of it next.
EOtherSize CAnnotationFiles::AskSize(const SPage& page, const QSize& size)
{
    const QPointer<CAnnotationFiles> self(this);
    const EOtherSize eSize = AnnotationDialogs::AskSize(QApplication::activeWindow(), page, size);
    if (self)
        m_bRefused = eSize == EOtherSize_Leave;
    return eSize;
}

void CAnnotationFiles::AfterLoading(const QString& strPath, const SReport& report)
{
    const bool bRefused = std::exchange(m_bRefused, false);
    if (!m_loading.contains(strPath) || --m_loading[strPath].nLoads > 0)
        return;
    const QString strImage = m_loading.take(strPath).strImage;
    if (bRefused || ImageOf(strImage) < 0) // it stays hidden, or is closed by now
        return;
    // What cannot be read cannot be overwritten, either.
    if (report.failure.empty() || !IsSoundOrMissing(strPath))
        m_hidden.remove(strImage);
    if (report.failure.empty())
        TellRemarks(strPath, report);
    else
        Q_EMIT signal_Told(tr("Cannot read the annotations in %1. %2 The file stays as it is.")
                               .arg(strPath, LibraryTexts::Sentence(QString::fromStdString(report.failure))));
}

void CAnnotationFiles::TellRemarks(const QString& strPath, const SReport& report)
{
    for (const auto& remark : report.remarks)
        Q_EMIT signal_Told(QStringLiteral("%1: %2").arg(
            QFileInfo(strPath).fileName(), LibraryTexts::Sentence(QString::fromStdString(remark.text))));
}

void CAnnotationFiles::Write(const QString& strPath, int nImage, EAnnotationsReplace eReplace, bool bAsked)
{
    m_writing.insert(strPath, SWriting{m_pStore->GetImageFile(nImage), bAsked});
    m_pStore->Save(strPath, OwnFormat(), nImage, eReplace);
}

void CAnnotationFiles::SaveAs(const QString& strPath, const QString& strFormat)
{
    m_writing.insert(strPath, SWriting());
    m_pStore->Save(strPath, strFormat);
}

void CAnnotationFiles::Save(int nImage)
{
    SaveBeside(nImage, true);
}

void CAnnotationFiles::SaveBeside(int nImage, bool bAsked)
{
    const QString strImage = m_pStore->GetImageFile(nImage);
    if (strImage.isEmpty()) {
        Q_EMIT signal_Told(tr("The annotations cannot be saved beside their image, for it has no file."));
    } else if (m_hidden.contains(strImage)) {
        Q_EMIT signal_Told(tr("%1 holds other annotations, which are not shown. It stays as it is.")
                               .arg(StoredFile(strImage)));
    } else if (StoredFile(strImage).isEmpty() && !HasObjects(m_pStore->TakeDocument(nImage))) {
        m_pStore->SetSaved(nImage); // there is nothing to write
    } else {
        // An older file beside the image was passed over for the newer one on purpose.
        const bool bElsewhere = StoredFile(strImage) == InDataFolder(strImage);
        Write(Beside(strImage), nImage, bElsewhere ? EAnnotationsReplace_Any : EAnnotationsReplace_Known,
              bAsked);
    }
}

/// Another window or program has written the file since it was read here.
void CAnnotationFiles::MeetConflict(const QString& strPath, const SWriting& writing)
{
    if (!writing.bAsked) {
        if (!m_conflicts.contains(strPath))
            Q_EMIT signal_Told(tr("%1 was changed by another window or program. The annotations do not save "
                                  "themselves any more.")
                                   .arg(strPath));
        m_conflicts.insert(strPath);
        return;
    }
    QWidget* pWindow = QApplication::activeWindow();
    const QPointer<CAnnotationFiles> self(this);
    const auto eChanged = AnnotationDialogs::AskChanged(pWindow, strPath);
    const int nImage = self ? ImageOf(writing.strImage) : -1;
    if (nImage < 0) // closed by now
        return;
    if (eChanged == AnnotationDialogs::EChanged_Overwrite) {
        Write(strPath, nImage, EAnnotationsReplace_Any, true);
    } else if (eChanged == AnnotationDialogs::EChanged_SaveAs) {
        const auto target = AnnotationDialogs::ChooseToSave(pWindow, strPath);
        if (self && !target.strPath.isEmpty())
            SaveAs(target.strPath, target.strFormat);
    }
}

void CAnnotationFiles::AfterSaving(const QString& strPath, const SReport& report)
{
    if (!m_writing.contains(strPath))
        return;
    const SWriting writing = m_writing.take(strPath);
    const QString& strImage = writing.strImage;
    const QString strElsewhere = InDataFolder(strImage);
    if (report.failure.empty()) {
        if (strPath == strElsewhere)
            Q_EMIT signal_Told(tr("The folder of %1 cannot be written. Its annotations are saved in %2.")
                                   .arg(QFileInfo(strImage).fileName(), strPath));
        m_conflicts.remove(strPath);
        Q_EMIT signal_Saved(strPath);
    } else if (report.conflict) {
        const QPointer<CAnnotationFiles> self(this);
        MeetConflict(strPath, writing);
        if (!self)
            return;
    } else if (ImageOf(strImage) >= 0 && strPath != strElsewhere && IsSoundOrMissing(strPath)) {
        QDir().mkpath(DataFolder());
        Write(strElsewhere, ImageOf(strImage), EAnnotationsReplace_Known, writing.bAsked);
    } else {
        Q_EMIT signal_Told(tr("Cannot save the annotations in %1. %2")
                               .arg(strPath, LibraryTexts::Sentence(QString::fromStdString(report.failure))));
    }
    if (m_writing.isEmpty())
        Q_EMIT signal_Idle();
}

bool CAnnotationFiles::SaveNow(int nImage)
{
    Save(nImage);
    if (!m_writing.isEmpty()) {
        QEventLoop loop;
        connect(this, &CAnnotationFiles::signal_Idle, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    return !m_pStore->HasUnsaved(nImage);
}

void CAnnotationFiles::StartAutoSave()
{
    if (CSettingManager::GetInt(HostSettings::kAutoSave, 0) != 0)
        m_autoSave.start();
}

void CAnnotationFiles::AutoSave()
{
    for (const int nImage : Unsaved())
        if (!m_pStore->GetImageFile(nImage).isEmpty())
            SaveBeside(nImage, false);
}

const SPage* CAnnotationFiles::PageOf(const SDocument& document) const
{
    const auto& vctPages = document.pages;
    const auto context = m_pStore->GetContext();
    const SDocument own = m_pStore->TakeDocument();
    const auto nInOwn = static_cast<std::size_t>(context.page);
    const int nPage = nInOwn < own.pages.size() ? own.pages[nInOwn].page : 0;
    const std::string& strName = context.imageName;
    auto it = std::find_if(vctPages.begin(), vctPages.end(),
                           [&](const SPage& page) { return !page.image.empty() && page.image == strName; });
    if (it == vctPages.end())
        it = std::find_if(vctPages.begin(), vctPages.end(),
                          [&](const SPage& page) { return page.page == nPage; });
    if (it == vctPages.end() && vctPages.size() == 1)
        it = vctPages.begin();
    return it == vctPages.end() ? nullptr : &*it;
}
