// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CAnnotationFiles.h"

#include "AnnotationDialogs.h"
#include "CImageOrigins.h"
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

CAnnotationFiles::CAnnotationFiles(CImageView2DCtrl* pCtrl, const CImageOrigins* pOrigins)
    : m_pCtrl(pCtrl), m_pOrigins(pOrigins), m_pStore(pCtrl->GetAnnotationStore())
{
    m_autoSave.setSingleShot(true);
    m_autoSave.setInterval(kAutoSaveMs);
    connect(&m_autoSave, &QTimer::timeout, this, &CAnnotationFiles::AutoSave);
    connect(m_pStore, &CAnnotationStore::signal_StepFinished, this, &CAnnotationFiles::StartAutoSave);
    connect(pOrigins, &CImageOrigins::signal_Changed, this, &CAnnotationFiles::StartAutoSave);
    m_pStore->SetAskSize([this](const SPage& page, const QSize& size) { return AskSize(page, size); });
    connect(m_pStore, &CAnnotationStore::signal_Saved, this, &CAnnotationFiles::AfterSaving);
    connect(m_pStore, &CAnnotationStore::signal_Loaded, this, &CAnnotationFiles::AfterLoading);
    connect(pCtrl, &CImageView2DCtrl::signal_FileOpened, this, &CAnnotationFiles::AfterOpening);
    connect(pCtrl->GetImageModel(), &CImageView2DModel::signal_ChangeCurrentImage, this,
            &CAnnotationFiles::ShowStored);
    using G = CImageView2DGeometryModel;
    const G* pGeometry = pCtrl->GetGeometryModel();
    connect(pGeometry, &G::signal_AddDrawableObject, this, [this] {
        if (std::exchange(m_bEmpty, false))
            m_nHome = std::max(0, m_pCtrl->GetImageModel()->GetCurrentIndex());
    });
    connect(pGeometry, &G::signal_ClearObject, this, [this] { m_bEmpty = true; });
    connect(pGeometry, &G::signal_DeleteDrawableObject, this,
            [this, pGeometry] { m_bEmpty = pGeometry->Size() == 0; });
}

int CAnnotationFiles::ImageIndex() const
{
    return m_bEmpty ? m_pCtrl->GetImageModel()->GetCurrentIndex() : m_nHome;
}

QString CAnnotationFiles::ImageFile() const
{
    return m_pOrigins->FileOf(ImageIndex());
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

/// The first image of the file is current by now.
void CAnnotationFiles::AfterOpening()
{
    const QString strImage = m_pOrigins->FileOf(m_pCtrl->GetImageModel()->GetCurrentIndex());
    if (strImage.isEmpty())
        return;
    m_pending.insert(strImage);
    m_refused.remove(strImage);
    ShowStored();
}

/// Shows what is stored for the current image, once, and not in place of other annotations.
void CAnnotationFiles::ShowStored()
{
    const QString strImage = m_pOrigins->FileOf(m_pCtrl->GetImageModel()->GetCurrentIndex());
    if (!m_pending.contains(strImage) || m_refused.contains(strImage) ||
        m_pCtrl->GetGeometryModel()->Size() > 0)
        return;
    if (m_expected.contains(strImage)) {
        m_pending.remove(strImage);
        m_pStore->Apply(m_expected.take(strImage));
        // Who restores what was not saved knows that the file is older.
        const QString strOld = StoredFile(strImage);
        m_pStore->SetKnownFile(strOld, Vantor::Annotations::IdentityOf(strOld.toStdString()).sha256);
        return;
    }
    const QString strFile = StoredFile(strImage);
    if (strFile.isEmpty()) {
        m_pending.remove(strImage);
    } else if (!m_loading.contains(strFile)) {
        m_loading.insert(strFile, strImage);
        m_pStore->Load(strFile);
    }
}

EOtherSize CAnnotationFiles::AskSize(const SPage& page, const QSize& size)
{
    const QString strImage = m_pOrigins->FileOf(m_pCtrl->GetImageModel()->GetCurrentIndex());
    const QPointer<CAnnotationFiles> self(this);
    const EOtherSize eSize = AnnotationDialogs::AskSize(QApplication::activeWindow(), page, size);
    if (self && eSize == EOtherSize_Leave)
        m_refused.insert(strImage);
    return eSize;
}

void CAnnotationFiles::AfterLoading(const QString& strPath, const SReport& report)
{
    const QString strImage = m_loading.take(strPath);
    if (strImage.isEmpty())
        return;
    // Another image is shown by now: they come when this one is shown again.
    if (strImage != m_pOrigins->FileOf(m_pCtrl->GetImageModel()->GetCurrentIndex()))
        return;
    if (m_refused.contains(strImage))
        return;
    m_pending.remove(strImage);
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

void CAnnotationFiles::Write(const QString& strPath, const QString& strImage, const QString& strFormat,
                             EAnnotationsReplace eReplace)
{
    m_writing.insert(strPath, strImage);
    m_pStore->Save(strPath, strFormat, eReplace);
}

void CAnnotationFiles::SaveAs(const QString& strPath, const QString& strFormat)
{
    Write(strPath, QString(), strFormat, EAnnotationsReplace_Any);
}

void CAnnotationFiles::Save()
{
    m_bAsked = true;
    SaveBeside();
}

void CAnnotationFiles::SaveBeside()
{
    m_autoSave.stop();
    const QString strImage = ImageFile();
    if (strImage.isEmpty()) {
        Q_EMIT signal_Told(tr("The annotations cannot be saved beside their image, for it has no file."));
    } else if (m_pending.contains(strImage) && !StoredFile(strImage).isEmpty()) {
        Q_EMIT signal_Told(tr("%1 holds other annotations, which are not shown. It stays as it is.")
                               .arg(StoredFile(strImage)));
    } else if (StoredFile(strImage).isEmpty() && !HasObjects(m_pStore->TakeDocument())) {
        m_pStore->SetSaved(); // there is nothing to write
    } else {
        // An older file beside the image was passed over for the newer one on purpose.
        const bool bElsewhere = StoredFile(strImage) == InDataFolder(strImage);
        Write(Beside(strImage), strImage, OwnFormat(),
              bElsewhere ? EAnnotationsReplace_Any : EAnnotationsReplace_Known);
    }
}

/// Another window or program has written the file since it was read here.
void CAnnotationFiles::MeetConflict(const QString& strPath, const QString& strImage)
{
    if (!m_bAsked) {
        if (!m_conflicts.contains(strPath))
            Q_EMIT signal_Told(tr("%1 was changed by another window or program. The annotations do not save "
                                  "themselves any more.")
                                   .arg(strPath));
        m_conflicts.insert(strPath);
        return;
    }
    QWidget* pWindow = QApplication::activeWindow();
    const auto eChanged = AnnotationDialogs::AskChanged(pWindow, strPath);
    if (eChanged == AnnotationDialogs::EChanged_Overwrite) {
        Write(strPath, strImage, OwnFormat(), EAnnotationsReplace_Any);
    } else if (eChanged == AnnotationDialogs::EChanged_SaveAs) {
        const auto target = AnnotationDialogs::ChooseToSave(pWindow, strPath);
        if (!target.strPath.isEmpty())
            SaveAs(target.strPath, target.strFormat);
    }
}

void CAnnotationFiles::AfterSaving(const QString& strPath, const SReport& report)
{
    if (!m_writing.contains(strPath))
        return;
    const QString strImage = m_writing.take(strPath);
    const QString strElsewhere = InDataFolder(strImage);
    if (report.failure.empty()) {
        if (strPath == strElsewhere)
            Q_EMIT signal_Told(tr("The folder of %1 cannot be written. Its annotations are saved in %2.")
                                   .arg(QFileInfo(strImage).fileName(), strPath));
        m_conflicts.remove(strPath);
        Q_EMIT signal_Saved(strPath);
    } else if (report.conflict) {
        MeetConflict(strPath, strImage);
    } else if (!strImage.isEmpty() && strPath != strElsewhere && IsSoundOrMissing(strPath)) {
        QDir().mkpath(DataFolder());
        Write(strElsewhere, strImage, OwnFormat(), EAnnotationsReplace_Known);
    } else {
        Q_EMIT signal_Told(tr("Cannot save the annotations in %1. %2")
                               .arg(strPath, LibraryTexts::Sentence(QString::fromStdString(report.failure))));
    }
    if (m_writing.isEmpty())
        Q_EMIT signal_Idle();
}

bool CAnnotationFiles::SaveNow()
{
    Save();
    if (!m_writing.isEmpty()) {
        QEventLoop loop;
        connect(this, &CAnnotationFiles::signal_Idle, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    return !m_pStore->HasUnsaved();
}

void CAnnotationFiles::StartAutoSave()
{
    if (CSettingManager::GetInt(HostSettings::kAutoSave, 0) != 0)
        m_autoSave.start();
}

/// Those of an image that is not saved wait for it: beside the image as it was they may be at wrong places.
void CAnnotationFiles::AutoSave()
{
    if (!m_pStore->HasUnsaved() || ImageFile().isEmpty() || m_pOrigins->IsUnsaved(ImageIndex()))
        return;
    m_bAsked = false;
    SaveBeside();
}

Vantor::Annotations::SContext CAnnotationFiles::Context() const
{
    Vantor::Annotations::SContext context;
    if (const auto pImage = m_pCtrl->GetCurrentImgage()) {
        context.imageName = QString::fromStdWString(pImage->GetName()).toStdString();
        context.width = pImage->GetWidth();
        context.height = pImage->GetHeight();
    }
    return context;
}

const SPage* CAnnotationFiles::PageOf(const SDocument& document) const
{
    const auto& vctPages = document.pages;
    const std::string strName = Context().imageName;
    const int nIndex = std::max(0, m_pCtrl->GetImageModel()->GetCurrentIndex());
    auto it = std::find_if(vctPages.begin(), vctPages.end(),
                           [&](const SPage& page) { return !page.image.empty() && page.image == strName; });
    if (it == vctPages.end())
        it = std::find_if(vctPages.begin(), vctPages.end(),
                          [&](const SPage& page) { return page.page == nIndex; });
    if (it == vctPages.end() && vctPages.size() == 1)
        it = vctPages.begin();
    return it == vctPages.end() ? nullptr : &*it;
}
