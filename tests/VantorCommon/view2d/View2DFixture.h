// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/support/TestImages.h"
#include "tests/support/ViewReference.h"

#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QApplication>
#include <QMenu>
#include <QResizeEvent>
#include <QtTest/QtTest>
#include <memory>
#include <utility>

/// What the tests of the 2D view share.
namespace View2DFixture
{
using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

constexpr int kViewID = 7;
const QColor kBackground(120, 120, 120);

/// A view inside a window. Its size follows resize() at once, as that of a top-level window would not.
struct SFixture {
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    QWidget window;
    CImageView2D* pView = new CImageView2D(&model, &geometry, &tools, kViewID, &window);
    QStringList signalLog;

    explicit SFixture(const QSize& size = QSize(400, 300), const ImagePtr& pImage = nullptr)
    {
        window.resize(900, 700);
        Resize(size);
        if (pImage)
            model.SetImages({pImage});
        WatchAll();
    }

    void Resize(const QSize& size)
    {
        pView->resize(size);
        QResizeEvent event(size, size); // hidden widgets get theirs late
        QApplication::sendEvent(pView, &event);
    }

    bool Show()
    {
        window.show();
        window.activateWindow();
        const bool bActive = QTest::qWaitForWindowActive(&window);
        pView->setFocus();
        signalLog.clear();
        return bActive && pView->hasFocus();
    }

    QStringList Take() { return std::exchange(signalLog, {}); }
    QImage Grab() const { return ViewReference::Grab(*pView); }
    QMenu* Menu(int nIndex) const { return pView->findChildren<QMenu*>().value(nIndex); }

    QImage Expected(const ImagePtr& pImage) const
    {
        QImage image;
        CUtilManager::ConvertImage(pImage.get(), image, false);
        return ViewReference(pView->size(), pView->GetViewPort(), QRect(QPoint(0, 0), image.size()))
            .PaintImage(*pImage, image, pView);
    }

private:
    static QString Text(const QPointF& p) { return QStringLiteral("(%1,%2)").arg(p.x()).arg(p.y()); }

    void Watch(void (CImageView2D::*pSignal)(), const char* pName)
    {
        QObject::connect(pView, pSignal, pView, [this, pName] { signalLog << QString::fromLatin1(pName); });
    }
    void Watch(void (CImageView2D::*pSignal)(QPointF&), const char* pName)
    {
        QObject::connect(pView, pSignal, pView,
                         [this, pName](QPointF& p) { signalLog << QString::fromLatin1(pName) + Text(p); });
    }
    void Watch(void (CImageView2D::*pSignal)(QPointF&, QPointF&), const char* pName)
    {
        QObject::connect(pView, pSignal, pView, [this, pName](QPointF& a, QPointF& b) {
            signalLog << QString::fromLatin1(pName) + Text(a) + Text(b);
        });
    }
    void WatchAll();
};

#define WATCH(name) Watch(&CImageView2D::signal_##name, #name)
inline void SFixture::WatchAll()
{
    WATCH(Active);
    WATCH(LoadImage);
    WATCH(LoadPdf);
    WATCH(SaveImage);
    WATCH(CloseImage);
    WATCH(Copy);
    WATCH(Paste);
    WATCH(Undo);
    WATCH(Redo);
    WATCH(DeleteDrawableObject);
    WATCH(CopyDrawableObject);
    WATCH(PasteDrawableObject);
    WATCH(Switch2DTo3D);
    WATCH(ChangeMousePosition);
    WATCH(SelectMovingStart);
    WATCH(SelectMovingDoing);
    WATCH(SelectMovingEnd);
    WATCH(DrawRectangleStart);
    WATCH(DrawRectangleDoing);
    WATCH(DrawRectangleEnd);
    WATCH(DrawEllipseStart);
    WATCH(DrawEllipseDoing);
    WATCH(DrawEllipseEnd);
    WATCH(DrawPolygonStart);
    WATCH(DrawPolygonDoing);
    WATCH(DrawPolygonEnd);
    WATCH(DrawPolygonWaiting);
    WATCH(DrawCircleStart);
    WATCH(DrawCircleDoing);
    WATCH(DrawCircleEnd);
    WATCH(DrawLineStart);
    WATCH(DrawLineDoing);
    WATCH(DrawLineEnd);
    WATCH(CheckResizeRotate);
    WATCH(SelectResizeStart);
    WATCH(SelectResizeDoing);
    WATCH(SelectResizeEnd);
    WATCH(ShowContextMenu);
    QObject::connect(pView, &CImageView2D::signal_PressKey, pView,
                     [this](int nKey) { signalLog << QStringLiteral("PressKey%1").arg(nKey); });
    QObject::connect(pView, &CImageView2D::signal_AddImage, pView,
                     [this](const QString& file) { signalLog << QStringLiteral("AddImage ") + file; });
}
#undef WATCH

inline std::shared_ptr<CImageView2DDrawableGeometry> MakeRectangle(double x, double y, double w, double h)
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(x, y, w, h));
    return pObject;
}

inline int Count(const QImage& picture, const QColor& color)
{
    int nCount = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            nCount += picture.pixelColor(x, y) == color;
    return nCount;
}

inline void Drag(QWidget& view, const QPointF& from, const QPointF& to)
{
    QMouseEvent press(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    for (QEvent* pEvent :
         {static_cast<QEvent*>(&press), static_cast<QEvent*>(&move), static_cast<QEvent*>(&release)})
        QApplication::sendEvent(&view, pEvent);
}

} // namespace View2DFixture
