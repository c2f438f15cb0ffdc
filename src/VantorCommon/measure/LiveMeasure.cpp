// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/LiveMeasure_p.h>

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QEvent>
#include <QWidget>
#include <utility>

CLiveMeasure::CLiveMeasure(QWidget* pPanel, Take take) : m_pPanel(pPanel), m_take(std::move(take))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &CLiveMeasure::Follow);
    if (pPanel)
        pPanel->installEventFilter(this);
}

CLiveMeasure::~CLiveMeasure() = default;

CImageView2DCtrl* CLiveMeasure::GetTarget() const
{
    return m_pCtrl;
}

void CLiveMeasure::SetTarget(CImageView2DCtrl* pCtrl)
{
    for (const QMetaObject::Connection& connection : std::exchange(m_vctConnections, {}))
        disconnect(connection);
    m_pCtrl = pCtrl;
    if (m_pJob)
        CJobs::Get().Cancel(m_pJob);
    const auto on = [this](const auto* pModel, auto... pSignals) {
        if (pModel)
            (m_vctConnections.push_back(connect(pModel, pSignals, this, [this] { FollowLater(); })), ...);
    };
    using G = CImageView2DGeometryModel;
    using I = CImageView2DModel;
    if (pCtrl) {
        on(pCtrl->GetGeometryModel(), &G::signal_AddDrawableObject, &G::signal_DeleteDrawableObject,
           &G::signal_ChangeDrawableObjectProperty, &G::signal_ChangeOrder, &G::signal_ClearObject,
           &G::signal_ChangeDrawingObject, &QObject::destroyed);
        on(pCtrl->GetImageModel(), &I::signal_ChangeImageList, &I::signal_ChangeCurrentIndex,
           &I::signal_ChangeCurrentImage, &QObject::destroyed);
        on(pCtrl, &QObject::destroyed);
    }
    FollowLater();
}

bool CLiveMeasure::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Show)
        FollowLater();
    return QObject::eventFilter(pWatched, pEvent);
}

void CLiveMeasure::FollowLater()
{
    if (!m_timer.isActive())
        m_timer.start(0);
}

void CLiveMeasure::Follow()
{
    if (!m_pPanel || !m_pPanel->isVisible())
        return;
    m_bAgain = m_pJob != nullptr;
    const CJob::Work work = m_bAgain ? nullptr : m_take();
    if (!work)
        return;
    SJob sJob;
    sJob.dropped = [this] { End(); };
    m_pJob = CJobs::Get().Start(this, std::move(sJob), [this, work](Vantor::CProgress& progress) {
        return [this, finish = work(progress)] {
            if (finish)
                finish();
            End();
        };
    });
}

void CLiveMeasure::End()
{
    m_pJob = nullptr;
    if (m_bAgain)
        FollowLater();
}

std::shared_ptr<Vantor::Geometry::CGeometry> LiveMeasure::GeometryOf(const CImageView2DDrawableObject& object)
{
    const auto* pShape = dynamic_cast<const CImageView2DDrawableGeometry*>(&object);
    return pShape ? pShape->GetData() : nullptr;
}

/// The band that selects and the edges of a polygon are no shapes.
LiveMeasure::ObjectPtr LiveMeasure::Drawn(const CImageView2DCtrl& ctrl)
{
    const CImageView2DToolModel* pTool = ctrl.GetToolModel();
    const SShapeKind* pKind = pTool ? ShapeKinds::OfMode(pTool->GetViewMode()) : nullptr;
    const auto* pGeometry = ctrl.GetGeometryModel();
    if (!pKind || !pKind->fromDrag || !pGeometry)
        return nullptr;
    const auto vctDrawing = pGeometry->GetObjectDrawing();
    return vctDrawing.size() == 1 && GeometryOf(*vctDrawing.front()) ? vctDrawing.front() : nullptr;
}

LiveMeasure::ObjectPtr
LiveMeasure::Chosen(const CImageView2DCtrl& ctrl,
                    const std::function<bool(const Vantor::Geometry::CGeometry&)>& isMeant)
{
    const auto isChosen = [&isMeant](const ObjectPtr& pObject) {
        const auto pShape = pObject ? GeometryOf(*pObject) : nullptr;
        return pShape && isMeant(*pShape);
    };
    if (ObjectPtr pDrawn = Drawn(ctrl); isChosen(pDrawn))
        return pDrawn;
    const auto* pGeometry = ctrl.GetGeometryModel();
    for (const ObjectPtr& pObject :
         pGeometry ? pGeometry->GetObjects() : CImageView2DGeometryModel::ObjectList())
        if (pObject->GetSelected() && isChosen(pObject))
            return pObject;
    return nullptr;
}
