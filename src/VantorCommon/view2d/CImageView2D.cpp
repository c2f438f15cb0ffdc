// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2D.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CUtilManager.h>
#include <VantorCommon/view2d/ImagePainter_p.h>
#include <VantorCommon/view2d/MiniMap_p.h>
#include <VantorCommon/view2d/PixelStamps_p.h>
#include <VantorCommon/view2d/Saturate_p.h>
#include <VantorCommon/view2d/SharedIcon_p.h>
#include <VantorCommon/view2d/ViewGesture_p.h>
#include <VantorCommon/view2d/ZoomState_p.h>

#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

namespace
{
using OnePoint = SViewGesture::OnePoint;
using TwoPoints = SViewGesture::TwoPoints;

/// Emits copies, because receivers get the points by reference and may change them.
void Send(CImageView2D* pView, OnePoint pSignal, QPointF point)
{
    if (pSignal)
        Q_EMIT(pView->*pSignal)(point);
}

void Send(CImageView2D* pView, TwoPoints pSignal, QPointF start, QPointF end)
{
    if (pSignal)
        Q_EMIT(pView->*pSignal)(start, end);
}

QPoint RoundedPosition(const QPointF& pos)
{
    return QPoint(RoundToInt(pos.x()), RoundToInt(pos.y()));
}
} // namespace

CImageView2D::CImageView2D(CImageView2DModel* pModel, CImageView2DGeometryModel* pGeometryModel,
                           CImageView2DToolModel* pToolModel, int nViewID, QWidget* pParent)
    : CImageView2DDrawableWidget(pToolModel, pParent), m_pModel(pModel), m_pGeometryModel(pGeometryModel),
      m_pZoom(std::make_unique<SZoomState>()), m_pPlace(std::make_unique<SPlaceParts>()),
      m_pStamps(std::make_unique<CPixelStamps>(QFont(QStringLiteral("Arial"), 15))),
      m_pPainter(std::make_unique<CImagePainter>(this)), m_nViewID(nViewID)
{
    m_pLayer = new CImageView2DLayer(nViewID, pToolModel, this);
    m_pLayer->SetGeometryModel(pGeometryModel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &CImageView2D::slot_ShowContextMenu);
    CreateMenus();
    ConnectModels();
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    KeepPicture();
}

CImageView2D::~CImageView2D() = default;

void CImageView2D::CreateMenus()
{
    const auto add = [this](QMenu* pMenu, const char* pIcon, const QString& strText, auto pTarget) {
        connect(pMenu->addAction(SharedIcon(pIcon), strText), &QAction::triggered, this, pTarget);
    };
    m_pMenuImage = new QMenu(this);
    add(m_pMenuImage, "photo.png", QStringLiteral("Load Image"), &CImageView2D::signal_LoadImage);
    add(m_pMenuImage, "pdf.png", QStringLiteral("Load PDF"), &CImageView2D::signal_LoadPdf);
    add(m_pMenuImage, "save_file.png", QStringLiteral("Save Image"), &CImageView2D::signal_SaveImage);
    add(m_pMenuImage, "close.png", QStringLiteral("Close Image"), &CImageView2D::signal_CloseImage);
    m_pMenuImage->addSeparator();
    add(m_pMenuImage, "copy.png", QStringLiteral("Copy (C)"), &CImageView2D::signal_Copy);
    add(m_pMenuImage, "paste.png", QStringLiteral("Paste (P)"), &CImageView2D::signal_Paste);
    m_pMenuImage->addSeparator();
    add(m_pMenuImage, "search.png", QStringLiteral("GoTo"), &CImageView2D::slot_Goto);
    add(m_pMenuImage, "3D.png", QStringLiteral("Switch To 3D View"), &CImageView2D::signal_Switch2DTo3D);

    m_pMenuObject = new QMenu(this);
    add(m_pMenuObject, "clear.png", QStringLiteral("Delete"), &CImageView2D::signal_DeleteDrawableObject);
}

void CImageView2D::ConnectModels()
{
    if (m_pModel) {
        connect(m_pModel.data(), &CImageView2DModel::signal_ChangeCurrentImage, this,
                &CImageView2D::slot_ChangeCurrentImage);
        connect(m_pModel.data(), &CImageView2DModel::signal_ChangeCurrentIndex, this,
                &CImageView2D::slot_ChangeCurrentImage);
        connect(m_pModel.data(), &CImageView2DModel::signal_PixelsCame, this,
                &CImageView2D::TakePixelsThatCame);
    }
    if (!m_pGeometryModel)
        return;
    for (auto pSignal : {&CImageView2DGeometryModel::signal_AddDrawableObject,
                         &CImageView2DGeometryModel::signal_DeleteDrawableObject})
        connect(m_pGeometryModel.data(), pSignal, this, &CImageView2D::slot_ChangeDrawableObjectProperty);
    connect(m_pGeometryModel.data(), &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty, this,
            &CImageView2D::slot_ChangeDrawableObjectProperty);
    connect(m_pGeometryModel.data(), &CImageView2DGeometryModel::signal_ClearObject, this,
            &CImageView2D::slot_ClearObject);
    connect(m_pGeometryModel.data(), &CImageView2DGeometryModel::signal_ChangeOrder, this,
            [this] { slot_ChangeDrawableObjectProperty(0); });
}

void CImageView2D::RegisterGeometryAction(const QString& strText, const QIcon& icon,
                                          std::function<void(int, unsigned int)> func)
{
    if (!m_pMenuObject)
        return;
    auto* pAction = new QAction(icon, strText, m_pMenuObject);
    m_pMenuObject->addAction(pAction);
    connect(pAction, &QAction::triggered, this, &CImageView2D::slot_CallbackDrawableObject);
    m_mapActions[pAction] = std::move(func);
}

void CImageView2D::slot_CallbackDrawableObject()
{
    const auto it = m_mapActions.find(qobject_cast<QAction*>(sender()));
    if (it == m_mapActions.end() || !it->second)
        return;
    const auto func = it->second;
    func(m_nViewID, m_nMenuUID);
}

void CImageView2D::slot_ShowContextMenu(const QPoint& pos)
{
    Send(this, &CImageView2D::signal_ShowContextMenu, MapToImage(QPointF(pos)));
}

void CImageView2D::ShowMenu(QMenu* pMenu, const QPointF& point)
{
    if (pMenu)
        pMenu->popup(mapToGlobal(RoundedPosition(MapToWidget(point))));
}

void CImageView2D::ShowContextMenu(const QPointF& point)
{
    ShowMenu(m_pMenuImage, point);
}

void CImageView2D::ShowContextMenuDrawableObject(const QPointF& point, unsigned int nUID)
{
    m_nMenuUID = nUID;
    ShowMenu(m_pMenuObject, point);
}

CImageView2DLayer* CImageView2D::GetLayerDrawing() const
{
    return m_pLayer;
}

CImageView2DGeometryModel* CImageView2D::GetGeometryModel() const
{
    return m_pGeometryModel;
}

unsigned int CImageView2D::GetImageUID() const
{
    return m_pImage ? m_pImage->GetUID() : Vantor::CVObject::kNoUID;
}

void CImageView2D::slot_ChangeCurrentImage()
{
    const QSize before = ImageSize();
    {
        QMutexLocker locker(&m_mutexImage);
        m_pImage = m_pModel ? m_pModel->GetCurrentImage() : nullptr;
        m_pPainter->SetImage(m_pImage);
        if (!m_pImage)
            m_image = QImage();
        else if (!TakePixels())
            return;
    }
    ClearMark();
    if (m_pPlace->pMiniMap)
        m_pPlace->pMiniMap->Forget();
    if (!m_pPlace->bKeep || !m_pImage || ImageSize() != before)
        *m_pZoom = SZoomState();
    Repaint();
}

/// Whether the pixels of the image are still to come.
bool CImageView2D::IsWaiting() const
{
    return m_pImage && m_image.isNull() && m_pImage->IsDeferred();
}

QSize CImageView2D::ImageSize() const
{
    return IsWaiting() ? QSize(m_pImage->GetWidth(), m_pImage->GetHeight()) : m_image.size();
}

/// Wraps the pixels of the image, or none while they would have to be waited for. The mutex is held.
/// @return false for an image that cannot be shown
bool CImageView2D::TakePixels()
{
    m_image = QImage();
    return (m_pImage->IsDeferred() && !m_pImage->HasPixels()) ||
           CUtilManager::ViewImage(m_pImage.get(), m_image);
}

void CImageView2D::TakePixelsThatCame(int nIndex)
{
    if (!m_pModel || nIndex != m_pModel->GetCurrentIndex() || !IsWaiting())
        return;
    QMutexLocker locker(&m_mutexImage);
    if (TakePixels())
        update();
}

void CImageView2D::slot_ChangeDrawableObjectProperty(unsigned int nUID)
{
    if (!m_pGeometryModel)
        return;
    m_bListIsOld = true;
    UpdateObject(nUID);
}

void CImageView2D::slot_DeleteDrawableObject(unsigned int, QString)
{
}

void CImageView2D::slot_AddDrawableObject(unsigned int, QString)
{
}

void CImageView2D::slot_ClearObject()
{
    Clear();
}

void CImageView2D::RebuildPaintList()
{
    if (!m_bListIsOld)
        return;
    m_bListIsOld = false;
    if (m_pGeometryModel)
        ReplaceDrawableObjects(m_pGeometryModel->GetObjects());
}

void CImageView2D::DrawObject(std::shared_ptr<CImageView2DDrawableObject> pObject)
{
    RebuildPaintList();
    CImageView2DDrawableWidget::DrawObject(std::move(pObject));
}

void CImageView2D::Clear()
{
    m_bListIsOld = false;
    CImageView2DDrawableWidget::Clear();
}

std::vector<std::shared_ptr<CImageView2DDrawableObject>> CImageView2D::GetDrawableObjects()
{
    RebuildPaintList();
    return CImageView2DDrawableWidget::GetDrawableObjects();
}

void CImageView2D::setVisible(bool bVisible)
{
    CImageView2DDrawableWidget::setVisible(bVisible);
    if (bVisible)
        Q_EMIT signal_Active();
}

bool CImageView2D::IsPanning() const
{
    return ToolModel() && ToolModel()->GetViewMode() == EImageView2DMode_Panning;
}

bool CImageView2D::CancelDrag()
{
    if (!m_bLeftDown)
        return false;
    m_bLeftDown = false;
    ShowCrosshair(nullptr);
    return true;
}

/// A release can go to a menu that popped up, or nowhere while the view was hidden. After a press that was
/// only sent to the view, as scripts and tests do, the buttons say nothing.
bool CImageView2D::CancelLostDrag(Qt::MouseButtons buttons)
{
    return m_bHeld && !buttons.testFlag(Qt::LeftButton) && CancelDrag();
}

void CImageView2D::mousePressEvent(QMouseEvent* pEvent)
{
    Q_EMIT signal_Active();
    ClearMark();
    CancelLostDrag(pEvent->buttons());
    m_bMoved = false;
    if (pEvent->button() == Qt::LeftButton) {
        m_bLeftDown = true;
        m_bHeld = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    }
    const QPoint pos = RoundedPosition(pEvent->localPos());
    if (m_bLeftDown && !IsPanning())
        ShowCrosshair(&pos);
    m_nLastX = pos.x();
    m_nLastY = pos.y();
    if (m_bLeftDown && ToolModel())
        Send(this, ViewGestureOf(ToolModel()->GetViewMode()).start, MapToImage(QPointF(pos)));
}

void CImageView2D::mouseMoveEvent(QMouseEvent* pEvent)
{
    CancelLostDrag(pEvent->buttons());
    const QPoint pos = RoundedPosition(pEvent->localPos());
    if (pos == QPoint(m_nLastX, m_nLastY)) {
        CImageView2DDrawableWidget::mouseMoveEvent(pEvent);
        return;
    }
    if (m_bLeftDown && !IsPanning())
        ShowCrosshair(&pos);
    Send(this, &CImageView2D::signal_ChangeMousePosition, MapToImage(QPointF(pos)));
    DoMove(pos);
}

/// Handles a move by mode. Only panning changes the last position, so in other modes it is the press point.
void CImageView2D::DoMove(const QPoint& pos)
{
    if (!ToolModel())
        return;
    const int nMode = ToolModel()->GetViewMode();
    const QPointF start = MapToImage(QPointF(m_nLastX, m_nLastY));
    const QPointF end = MapToImage(QPointF(pos));
    if (m_bLeftDown && nMode == EImageView2DMode_Panning)
        Pan(pos);
    else if (m_bLeftDown) {
        m_bMoved = true;
        Send(this, ViewGestureOf(nMode).doing, start, end);
    } else
        Send(this, ViewGestureOf(nMode).hover, end);
}

void CImageView2D::mouseReleaseEvent(QMouseEvent* pEvent)
{
    const QPointF start = MapToImage(QPointF(m_nLastX, m_nLastY));
    const QPointF end = MapToImage(QPointF(RoundedPosition(pEvent->localPos())));
    if (pEvent->button() != Qt::LeftButton)
        CancelLostDrag(pEvent->buttons());
    ShowCrosshair(nullptr);
    const bool bLeftDown = m_bLeftDown;
    m_bLeftDown = false;
    if (!bLeftDown || !ToolModel())
        return;
    const int nMode = ToolModel()->GetViewMode();
    if (nMode != EImageView2DMode_Selecting || start != end)
        Send(this, ViewGestureOf(nMode).end, start, end);
    else if (m_bMoved) // A drag that ends at its press point has no End; the hover signal shows that it is
                       // over.
        Send(this, &CImageView2D::signal_CheckResizeRotate, end);
}

void CImageView2D::keyPressEvent(QKeyEvent* pEvent)
{
    Q_EMIT signal_PressKey(pEvent->key());
    if (pEvent->matches(QKeySequence::Undo))
        Q_EMIT signal_Undo();
    else if (pEvent->matches(QKeySequence::Redo))
        Q_EMIT signal_Redo();
    else if (pEvent->matches(QKeySequence::Copy))
        Q_EMIT signal_Copy();
    else if (pEvent->matches(QKeySequence::Paste))
        Q_EMIT signal_Paste();
    else
        CImageView2DDrawableWidget::keyPressEvent(pEvent);
}

void CImageView2D::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (pEvent->mimeData()->hasUrls())
        pEvent->acceptProposedAction();
}

void CImageView2D::dropEvent(QDropEvent* pEvent)
{
    const QList<QUrl> lstUrls = pEvent->mimeData()->urls();
    for (const QUrl& url : lstUrls)
        Q_EMIT signal_AddImage(url.toLocalFile());
    pEvent->acceptProposedAction();
}
