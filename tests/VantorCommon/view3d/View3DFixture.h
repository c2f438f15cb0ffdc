// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DCtrl.h>
#include <VantorCommon/view3d/CImageView3DModel.h>

#include <QMouseEvent>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest/QtTest>
#include <cmath>

/// Counts the loads of a model on the thread that made it. (A QSignalSpy would count on the thread that
/// loads.)
class CLoadCounter
{
public:
    explicit CLoadCounter(CImageView3DModel& model)
    {
        QObject::connect(&model, &CImageView3DModel::signal_LoadFinished, &m_context, [this] { ++m_nCount; });
    }
    int count() const { return m_nCount; }
    void clear() { m_nCount = 0; }

private:
    QObject m_context;
    int m_nCount = 0;
};

/// A 3D view with its models and its controller in a window of its own.
struct SView3DFixture {
    static constexpr int kSide = 400;

    CImageView2DModel images;
    CImageView3DModel model;
    QWidget window;
    QPointer<CImageView3D> pView = new CImageView3D(&model, &window);
    std::unique_ptr<CImageView3DCtrl> pCtrl =
        std::make_unique<CImageView3DCtrl>(&model, &images, pView, nullptr, nullptr, nullptr);
    CLoadCounter loads{model};

    SView3DFixture()
    {
        window.resize(kSide, kSide);
        pView->resize(kSide, kSide);
        pView->hide();
    }

    bool ShowWindow()
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }

    /// Shows window and view.
    bool Show()
    {
        if (!ShowWindow())
            return false;
        pView->setVisible(true);
        return QTest::qWaitFor([this] { return pView->isValid(); });
    }

    /// Waits until the view has taken the mesh of the n-th load.
    bool WaitForLoad(int nLoads)
    {
        return QTest::qWaitFor([&] { return loads.count() >= nLoads && model.GetVerticesSize() == 0; });
    }

    QImage Picture() { return pView->grabFramebuffer(); }

    /// Where a point of the mesh's space must appear, from the parameters alone.
    QPointF Project(const QVector3D& point) const
    {
        QMatrix4x4 matrix;
        matrix.perspective(model.GetFOV(), float(pView->width()) / float(pView->height()), model.GetNear(),
                           model.GetFar());
        matrix.lookAt({model.GetCameraPositionX(), model.GetCameraPositionY(), model.GetCameraPositionZ()},
                      {model.GetCameraCenterX(), model.GetCameraCenterY(), model.GetCameraCenterZ()},
                      {model.GetCameraUpX(), model.GetCameraUpY(), model.GetCameraUpZ()});
        matrix.rotate(model.GetRotateX(), 1, 0, 0);
        matrix.rotate(model.GetRotateY(), 0, 1, 0);
        matrix.rotate(model.GetRotateZ(), 0, 0, 1);
        matrix.translate(model.GetTranslateX(), model.GetTranslateY(), model.GetTranslateZ());
        matrix.scale(model.GetScaleX(), model.GetScaleY(), model.GetScaleZ());
        const QVector3D clip = matrix.map(point);
        return QPointF((clip.x() + 1) / 2 * pView->width(), (1 - clip.y()) / 2 * pView->height());
    }

    /// Whether a colour appears within a pixel of the place of a point.
    bool HasColour(const QImage& picture, const QVector3D& point, const QColor& colour) const
    {
        const QPointF place = Project(point);
        const int nX = int(std::floor(place.x()));
        const int nY = int(std::floor(place.y()));
        for (int y = nY - 1; y <= nY + 1; ++y)
            for (int x = nX - 1; x <= nX + 1; ++x)
                if (picture.valid(x, y) && picture.pixelColor(x, y) == colour)
                    return true;
        return false;
    }

    bool HasAxes(const QImage& picture) const
    {
        const QColor colours[] = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};
        for (int i = 0; i < 3; ++i)
            for (const float f : {0.15F, 0.4F, 0.6F, 0.95F, 1.003F}) {
                const QVector3D point(i == 0 ? f : 0, i == 1 ? f : 0, i == 2 ? f : 0);
                if (!HasColour(picture, point, colours[i])) {
                    qInfo() << "axis" << i << "at" << f << Project(point);
                    return false;
                }
            }
        return true;
    }

    void Drag(int dx, int dy)
    {
        const QPoint from(kSide / 2, kSide / 2);
        QTest::mousePress(pView.data(), Qt::LeftButton, Qt::NoModifier, from);
        const QPointF to = from + QPoint(dx, dy);
        QMouseEvent move(QEvent::MouseMove, to, pView->mapToGlobal(to.toPoint()), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(pView, &move);
        QTest::mouseRelease(pView.data(), Qt::LeftButton, Qt::NoModifier, to.toPoint());
    }

    void Wheel(int nDelta)
    {
        const QPointF at(kSide / 2.0, kSide / 2.0);
        QWheelEvent wheel(at, pView->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, nDelta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(pView, &wheel);
    }
};
