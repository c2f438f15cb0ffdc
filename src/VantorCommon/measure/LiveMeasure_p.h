// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/job/CJobs.h>

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

class CImageView2DCtrl;
class CImageView2DDrawableObject;
class QWidget;

namespace Vantor::Geometry
{
class CGeometry;
}

/// Keeps a panel up to date with the images and shapes of a 2D view: whatever happens to them is followed
/// once, when the present event is over and the panel can be seen. One job at a time; what happens meanwhile
/// is followed when it has ended, so a drag never cancels what it waits for. GUI thread only.
class CLiveMeasure : public QObject
{
public:
    /// Takes what is to be measured from the GUI thread. @return the work of a job; null when there is none
    using Take = std::function<CJob::Work()>;

    /// @param pPanel  not owned; while it cannot be seen nothing is done
    CLiveMeasure(QWidget* pPanel, Take take);
    ~CLiveMeasure() override;

    /// Another view, which may be null or die first.
    void SetTarget(CImageView2DCtrl* pCtrl);
    CImageView2DCtrl* GetTarget() const;
    void FollowLater();

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override; ///< the panel comes to sight

private:
    void Follow();
    void End();

    QPointer<QWidget> m_pPanel;
    Take m_take;
    QPointer<CImageView2DCtrl> m_pCtrl;
    std::vector<QMetaObject::Connection> m_vctConnections;
    QTimer m_timer;
    CJobs::JobPtr m_pJob; ///< null while none runs
    bool m_bAgain = false;
};

namespace LiveMeasure
{
using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;

/// The geometry of an annotation, shared with it; null for texts.
std::shared_ptr<Vantor::Geometry::CGeometry> GeometryOf(const CImageView2DDrawableObject& object);
/// What is drawn at the moment, if it is one shape; otherwise null.
ObjectPtr Drawn(const CImageView2DCtrl& ctrl);
/// What is drawn at the moment, otherwise the topmost selected shape that is meant; null without one.
ObjectPtr Chosen(const CImageView2DCtrl& ctrl,
                 const std::function<bool(const Vantor::Geometry::CGeometry&)>& isMeant);
} // namespace LiveMeasure
