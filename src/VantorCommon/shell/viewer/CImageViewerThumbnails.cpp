// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The list of thumbnails of CImageViewer.
#include <VantorCommon/shell/viewer/CImageViewer.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CUtilManager.h>
#include <VantorCommon/view2d/Saturate_p.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QListView>
#include <QPixmapCache>
#include <QSplitter>
#include <QStandardItemModel>

using Vantor::Algorithms::CImage;

namespace
{
constexpr int kSideListWidth = 90;
constexpr int kSideListShare = 5; // the list is no wider than the viewer divided by this
/// A thumbnail is sampled from the image at this many times its size and then smoothed, which is fast and of
/// good quality.
constexpr int kThumbnailOversampling = 4;
/// The limit makes the thumbnail of a very tall image narrower than the list, so that it does not fill the
/// memory.
constexpr int kMaxThumbnailHeight = 4096;
/// The image's index, which may differ from its row: images that cannot be shown have no row.
constexpr int kImageIndexRole = Qt::UserRole + 1;

/// The identifier of the image, which finds its thumbnail again in a list that has changed.
constexpr int kImageUIDRole = Qt::UserRole + 2;

/// The size in device-independent pixels of the thumbnail of that width.
QSize ThumbnailSize(const CImage& image, int nWidth)
{
    double dblHeight = double(image.GetHeight()) * nWidth / image.GetWidth();
    double dblWidth = nWidth;
    if (dblHeight > kMaxThumbnailHeight) {
        dblWidth *= kMaxThumbnailHeight / dblHeight;
        dblHeight = kMaxThumbnailHeight;
    }
    return {std::max(1, RoundToInt(dblWidth)), std::max(1, RoundToInt(dblHeight))};
}

/// Whether the pixels would have to be waited for.
bool IsWaitedFor(const CImage& image)
{
    return image.IsDeferred() && !image.HasPixels();
}

/// An empty sheet in place of an image whose pixels are still to come; all of one size share their memory.
QPixmap EmptyThumbnail(const QSize& size, double dblPixelRatio)
{
    const QString strKey = QStringLiteral("vantor sheet %1 %2").arg(size.width()).arg(size.height());
    QPixmap sheet;
    if (!QPixmapCache::find(strKey, &sheet)) {
        sheet = QPixmap(size);
        sheet.fill(Qt::white);
        QPixmapCache::insert(strKey, sheet);
    }
    sheet.setDevicePixelRatio(dblPixelRatio);
    return sheet;
}

/// The image scaled to a width in device-independent pixels, with the screen's pixel ratio. Null when it
/// cannot be shown.
QImage MakeThumbnail(const CImage* pImage, int nWidth, double dblPixelRatio)
{
    QImage view;
    if (!CUtilManager::ViewImage(pImage, view))
        return QImage();
    const QSize size = ThumbnailSize(*pImage, nWidth) * dblPixelRatio;
    const QSize coarse = size * kThumbnailOversampling;
    if (view.width() > coarse.width() && view.height() > coarse.height())
        view = view.scaled(coarse);
    QImage thumbnail = view.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).copy();
    thumbnail.setDevicePixelRatio(dblPixelRatio);
    return thumbnail;
}
} // namespace

void CImageViewer::CreateSideList()
{
    m_pSideModel = new QStandardItemModel(this);
    m_pSideList = new QListView(this);
    m_pSideList->setModel(m_pSideModel);
    m_pSideList->setViewMode(QListView::IconMode);
    m_pSideList->setFlow(QListView::TopToBottom);
    m_pSideList->setWrapping(false);
    m_pSideList->setMovement(QListView::Static);
    m_pSideList->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pSideList->setFocusPolicy(Qt::NoFocus);
    m_pSideList->setAccessibleName(QStringLiteral("Images"));
    m_pSideList->setMinimumWidth(1); // as narrow as the user likes
    // A bar that appeared and disappeared with the height of the thumbnails would change their width each
    // time.
    m_pSideList->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_pSideList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pSideList->viewport()->installEventFilter(this);
    // So that white pages stand out.
    m_pSideList->viewport()->setBackgroundRole(QPalette::Mid);
    connect(m_pSideList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CImageViewer::slot_CurrentChanged);
}

/// Makes the list narrow in a narrow viewer, until the user has chosen a width.
void CImageViewer::FitSideList()
{
    const int nWidth = std::min(kSideListWidth, width() / kSideListShare);
    if (m_bListWidthChosen || nWidth == m_nListWidth)
        return;
    m_nListWidth = nWidth;
    m_pSplitter->setSizes({nWidth, std::max(1, m_pSplitter->width() - nWidth)});
}

/// Moves in the list by the keys for moving in a list, while the view keeps the keyboard for undo and the
/// like. With bViewKeys the keys for pages stay with the view, which gets none of the others.
/// @return whether it was such a key
bool CImageViewer::StepInList(QKeyEvent& event)
{
    const bool bPage = event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
    if (bPage && m_bViewKeys)
        return false;
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(m_pSideList, &event);
        return true;
    default:
        return false;
    }
}

void CImageViewer::RenewThumbnail(int nIndex, const CImage* pImage)
{
    for (int i = 0; i < m_pSideModel->rowCount(); ++i)
        if (m_pSideModel->item(i)->data(kImageIndexRole) == nIndex)
            SetThumbnail(m_pSideModel->item(i), pImage);
    Q_EMIT m_pSideModel->layoutChanged();
}

/// The width of the list; 0 while it is collapsed, and the items stay.
int CImageViewer::ThumbnailWidth() const
{
    return std::max(1, m_pSideList->viewport()->rect().width());
}

bool CImageViewer::SetThumbnail(QStandardItem* pItem, const CImage* pImage)
{
    if (IsWaitedFor(*pImage)) {
        SetWaitingThumbnail(pItem, *pImage, pItem->data(Qt::DecorationRole).value<QPixmap>());
        return true;
    }
    const QImage thumbnail = MakeThumbnail(pImage, ThumbnailWidth(), m_pSideList->devicePixelRatioF());
    if (thumbnail.isNull())
        return false;
    pItem->setData(QPixmap::fromImage(thumbnail), Qt::DecorationRole);
    return true;
}

/// The thumbnail that an image has had, or an empty sheet, until its pixels come.
void CImageViewer::SetWaitingThumbnail(QStandardItem* pItem, const CImage& image, const QPixmap& former)
{
    const double dblRatio = m_pSideList->devicePixelRatioF();
    const QSize size = ThumbnailSize(image, ThumbnailWidth()) * dblRatio;
    QPixmap shown = former;
    if (former.isNull())
        shown = EmptyThumbnail(size, dblRatio);
    else if (former.size() != size)
        shown = former.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    shown.setDevicePixelRatio(dblRatio);
    pItem->setData(shown, Qt::DecorationRole);
}

/// The item of an image, null when it cannot be shown.
QStandardItem* CImageViewer::CreateSideItem(int nIndex, const QHash<unsigned int, QPixmap>& formerThumbnails)
{
    const auto pImage = m_pImageModel->GetImage(nIndex);
    auto pItem = std::make_unique<QStandardItem>();
    if (!pImage)
        return nullptr;
    if (IsWaitedFor(*pImage))
        pItem->setData(formerThumbnails.value(pImage->GetUID()), Qt::DecorationRole);
    if (!SetThumbnail(pItem.get(), pImage.get()))
        return nullptr;
    const QString strName = QString::fromStdWString(pImage->GetName());
    pItem->setText(QString::asprintf("%d. ", nIndex + 1) + strName);
    pItem->setToolTip(strName);
    pItem->setData(nIndex, kImageIndexRole);
    pItem->setData(pImage->GetUID(), kImageUIDRole);
    return pItem.release();
}

void CImageViewer::UpdateSideView()
{
    QHash<unsigned int, QPixmap> formerThumbnails;
    for (int i = 0; i < m_pSideModel->rowCount(); ++i)
        formerThumbnails.insert(m_pSideModel->item(i)->data(kImageUIDRole).toUInt(),
                                m_pSideModel->item(i)->data(Qt::DecorationRole).value<QPixmap>());
    m_pSideModel->clear();
    if (!m_pImageModel)
        return;
    for (int i = 0; i < m_pImageModel->GetImageCount(); ++i)
        if (QStandardItem* pItem = CreateSideItem(i, formerThumbnails))
            m_pSideModel->appendRow(pItem);
    slot_ChangeCurrentIndex();
}

void CImageViewer::ResizeSideView()
{
    if (!m_pImageModel)
        return;
    const int nWidth = qRound(ThumbnailWidth() * m_pSideList->devicePixelRatioF());
    for (int i = 0; i < m_pSideModel->rowCount(); ++i) {
        QStandardItem* pItem = m_pSideModel->item(i);
        const auto pImage = m_pImageModel->GetImage(pItem->data(kImageIndexRole).toInt());
        const auto thumbnail = pItem->data(Qt::DecorationRole).value<QPixmap>();
        if (!pImage || thumbnail.width() == nWidth)
            continue;
        SetThumbnail(pItem, pImage.get());
        if (IsWaitedFor(*pImage))
            m_pImageModel->AskForPixels(pItem->data(kImageIndexRole).toInt());
    }
}

void CImageViewer::TakePixelsThatCame(int nIndex)
{
    if (const auto pImage = m_pImageModel->GetImage(nIndex))
        RenewThumbnail(nIndex, pImage.get());
}

void CImageViewer::slot_ChangeImageList()
{
    UpdateSideView();
}

void CImageViewer::slot_ChangeCurrentIndex()
{
    if (m_pImageModel)
        m_pSideList->setCurrentIndex(m_pSideModel->index(m_pImageModel->GetCurrentIndex(), 0));
}

void CImageViewer::slot_CurrentChanged(const QModelIndex& current, const QModelIndex&)
{
    Q_EMIT signal_SelectImage(current.row());
}
