// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CImageOrigins.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <iterator>
#include <utility>

using Vantor::Algorithms::CImage;

namespace
{
/// The file from which an image was loaded; empty for a capture and for a pasted picture.
QString LoadedFrom(const CImage& image)
{
    const QString strName = QString::fromStdWString(image.GetName());
    if (strName.isEmpty())
        return {};
    return QDir::cleanPath(QDir(QString::fromStdWString(image.GetFolder())).absoluteFilePath(strName));
}
} // namespace

CImageOrigins::CImageOrigins(CImageView2DCtrl* pCtrl) : m_pCtrl(pCtrl), m_pModel(pCtrl->GetImageModel())
{
    connect(m_pModel, &CImageView2DModel::signal_ChangeImageList, this, &CImageOrigins::LearnList);
    connect(m_pModel, &CImageView2DModel::signal_ChangeCurrentImage, this, [this] {
        FollowChange();
        Q_EMIT signal_Changed();
    });
    // The first image of the file is current now, and the others follow it.
    connect(pCtrl, &CImageView2DCtrl::signal_FileOpened, this, [this] {
        Learn(m_pModel->GetCurrentIndex());
        Q_EMIT signal_Changed();
    });
    connect(pCtrl, &CImageView2DCtrl::signal_ImageSaved, this, &CImageOrigins::LearnSaved);
}

/// Learns the images from an index on, which have just come from a file.
void CImageOrigins::Learn(int nFirst)
{
    for (int i = nFirst; i < m_pModel->GetImageCount(); ++i) {
        const auto pImage = m_pModel->GetImage(i);
        const QString strFile = pImage ? LoadedFrom(*pImage) : QString();
        if (strFile.isEmpty())
            continue;
        m_clean[pImage->GetUID()] = strFile;
        m_saved.remove(pImage->GetUID());
        if (!pImage->GetNotes().empty())
            m_partly.insert(strFile);
    }
}

/// An appended image comes from its file, if it has one: no other signal announces a pasted file.
void CImageOrigins::LearnList()
{
    Learn(static_cast<int>(m_vctKnown.size()));
    FollowChange();
    Q_EMIT signal_Changed();
}

/// An image that was turned or filtered is saved where the one before it was saved.
void CImageOrigins::FollowChange()
{
    std::vector<unsigned int> vctNow;
    for (int i = 0; i < m_pModel->GetImageCount(); ++i) {
        const auto pImage = m_pModel->GetImage(i);
        vctNow.push_back(pImage ? pImage->GetUID() : 0);
    }
    for (std::size_t i = 0; vctNow.size() == m_vctKnown.size() && i < vctNow.size(); ++i) {
        const auto it = m_saved.constFind(m_vctKnown[i]);
        if (vctNow[i] != m_vctKnown[i] && it != m_saved.constEnd() && !m_saved.contains(vctNow[i]))
            m_saved.insert(vctNow[i], QString(it.value()));
    }
    m_vctKnown = std::move(vctNow);
}

void CImageOrigins::LearnSaved(const QString& strPath, unsigned int nImageUID)
{
    const QString strFile = QFileInfo(strPath).absoluteFilePath();
    // What was in the file before is there no longer.
    for (auto it = m_clean.begin(); it != m_clean.end();)
        it = it.value() == strFile ? m_clean.erase(it) : std::next(it);
    m_clean.insert(nImageUID, strFile);
    m_saved.insert(nImageUID, strFile);
    m_partly.remove(strFile);
    Q_EMIT signal_Changed();
}

bool CImageOrigins::IsUnsaved(int nIndex) const
{
    const auto pImage = m_pModel->GetImage(nIndex);
    return pImage && !m_clean.contains(pImage->GetUID());
}

bool CImageOrigins::AnyUnsaved() const
{
    for (int i = 0; i < m_pModel->GetImageCount(); ++i)
        if (IsUnsaved(i))
            return true;
    return false;
}

QString CImageOrigins::FileOf(int nIndex) const
{
    const auto pImage = m_pModel->GetImage(nIndex);
    return pImage ? m_saved.value(pImage->GetUID(), LoadedFrom(*pImage)) : QString();
}

/// Whether writing an image there keeps everything in the file: a document has more, and so may a file with
/// several pages or frames, or one that was read in part.
bool CImageOrigins::IsWholeIn(const QString& strPath) const
{
    static const QStringList lstSuffixes{QStringLiteral("bmp"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
                                         QStringLiteral("png"), QStringLiteral("gif"), QStringLiteral("tif"),
                                         QStringLiteral("tiff")};
    return lstSuffixes.contains(QFileInfo(strPath).suffix().toLower()) && !m_partly.contains(strPath);
}

void CImageOrigins::Save(int nIndex)
{
    if (nIndex != m_pModel->GetCurrentIndex())
        m_pModel->SetCurrentIndex(nIndex);
    const QString strFile = FileOf(nIndex);
    if (IsWholeIn(strFile))
        m_pCtrl->SaveFile(strFile);
    else
        m_pCtrl->slot_SaveImage();
}

bool CImageOrigins::SaveNow(int nIndex)
{
    Save(nIndex);
    CJobs::Get().Finish(m_pCtrl);
    return !IsUnsaved(nIndex);
}
