// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <tests/support/TestImages.h>

#include <QPushButton>
#include <QWindow>
#include <QtTest/QtTest>

/// A 2D view of 400 x 300 with its models, its controller and the tool dock beside it, on the screen and with
/// the keyboard focus. Mouse and keys go through the window, as a person's do; points are image coordinates.
/// With an image of 200 x 150 one image pixel is two widget pixels.
class EditFixture
{
public:
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;

    explicit EditFixture(int nImageWidth = 200, int nImageHeight = 150)
    {
        view = new CImageView2D(&images, &geometry, &tool, 7, &host);
        view->setGeometry(0, 0, 400, 300);
        toolDock = new CToolBoxDockView(&host);
        toolDock->setGeometry(410, 0, 250, 300);
        propertyDock = new CPropertyDockView(&host);
        propertyDock->setGeometry(410, 310, 250, 100);
        statusDock = new CStatusBarDockView(&host);
        statusDock->setGeometry(0, 310, 400, 100);
        ctrl = std::make_unique<CImageView2DCtrl>(&images, &geometry, &tool, view, toolDock, propertyDock,
                                                  statusDock);
        images.SetImages({MakeTestImage(nImageWidth, nImageHeight, 3)});
        host.setGeometry(0, 0, 670, 420);
        host.show();
        QVERIFY(QTest::qWaitForWindowActive(&host));
        ctrl->slot_Active();
        view->setFocus();
        QTRY_VERIFY(view->hasFocus());
    }

    QPoint Pixel(const QPointF& point) const
    {
        const QPointF pos = view->MapToWidget(point);
        return view->mapTo(view->window(), QPoint(qRound(pos.x()), qRound(pos.y())));
    }
    QWindow* Window() const { return view->window()->windowHandle(); }

    void Press(const QPointF& point, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mousePress(Window(), button, modifiers, Pixel(point));
    }
    void Move(const QPointF& point) { QTest::mouseMove(Window(), Pixel(point)); }
    void Release(const QPointF& point, Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseRelease(Window(), button, modifiers, Pixel(point));
    }
    void Click(const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Press(point, Qt::LeftButton, modifiers);
        Release(point, Qt::LeftButton, modifiers);
    }
    /// The mouse comes to the start without a button, as it does when a person drags.
    void Drag(const QPointF& start, const QPointF& end)
    {
        Move(start + QPointF(1, 1));
        Move(start);
        Press(start);
        Move((start + end) / 2);
        Move(end);
        Release(end);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(Window(), key, modifiers);
    }
    void PressUndo() { Key(Qt::Key_Z, Qt::ControlModifier); }
    void PressRedo() { Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    /// Presses a button of the tool dock by its text.
    void Choose(const char* szText)
    {
        for (QPushButton* pButton : toolDock->findChildren<QPushButton*>()) {
            if (pButton->text() != QLatin1String(szText))
                continue;
            const QPoint centre = pButton->mapTo(pButton->window(), pButton->rect().center());
            QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, centre);
            return;
        }
        QFAIL("no such button");
    }

    /// Puts a rectangle into the model, unselected and without an undo step.
    ObjectPtr AddRectangle(double x, double y, double width, double height)
    {
        return Add(std::make_shared<Vantor::Geometry::CRectangle>(x, y, width, height));
    }
    ObjectPtr Add(std::shared_ptr<Vantor::Geometry::CGeometry> pGeometry)
    {
        const auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
        pObject->SetData(std::move(pGeometry));
        geometry.AddObject(pObject);
        pObject->SetSelected(false);
        return pObject;
    }
    /// The geometry of an object, if it is of that kind.
    template <class T> static std::shared_ptr<T> ShapeOf(const ObjectPtr& pObject)
    {
        const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(pObject);
        return pShape ? std::dynamic_pointer_cast<T>(pShape->GetData()) : nullptr;
    }
    /// Raw x, y, width and height of a rectangle or an ellipse.
    static QRectF BoxOf(const ObjectPtr& pObject)
    {
        const auto pBox = ShapeOf<Vantor::Geometry::CBox>(pObject);
        return pBox ? QRectF(pBox->x(), pBox->y(), pBox->width(), pBox->height()) : QRectF();
    }
    std::vector<ObjectPtr> Selected() const
    {
        std::vector<ObjectPtr> vctSelected;
        for (const ObjectPtr& pObject : geometry.GetObjects())
            if (pObject->GetSelected())
                vctSelected.push_back(pObject);
        return vctSelected;
    }

    CImageView2DModel images;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tool;
    QWidget host;
    CImageView2D* view = nullptr;
    CToolBoxDockView* toolDock = nullptr;
    CPropertyDockView* propertyDock = nullptr;
    CStatusBarDockView* statusDock = nullptr;
    std::unique_ptr<CImageView2DCtrl> ctrl;
};
