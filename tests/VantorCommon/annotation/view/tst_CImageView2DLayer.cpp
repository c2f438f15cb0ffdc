// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include "tests/support/ViewReference.h"

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>

#include <QApplication>

using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
using ObjectList = std::vector<ObjectPtr>;

namespace
{
ObjectPtr MakeRectangle(double x = 10, double y = 10)
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(x, y, 40, 30));
    pObject->SetDisplayName(false);
    return pObject;
}

struct SFixture {
    CImageView2DGeometryModel model;
    QWidget parent;
    CImageView2DLayer* pLayer = new CImageView2DLayer(3, nullptr, &parent);

    SFixture()
    {
        parent.resize(100, 80);
        pLayer->setGeometry(0, 0, 100, 80);
        pLayer->SetViewPort(QRect(0, 0, 100, 80));
        pLayer->SetWindow(QRect(0, 0, 100, 80));
    }
};
} // namespace

class tst_CImageView2DLayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsATransparentOverlayThatNeverTakesTheMouse()
    {
        const SFixture f;
        QVERIFY(f.pLayer->windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(!f.pLayer->isWindow());
        QVERIFY(f.pLayer->testAttribute(Qt::WA_NoSystemBackground));
        QVERIFY(f.pLayer->testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(f.pLayer->testAttribute(Qt::WA_TransparentForMouseEvents));
        QCOMPARE(f.pLayer->GetViewID(), 3);
        QVERIFY(!f.parent.childAt(50, 40)); // the parent gets the mouse
    }

    void itIsShownWithItsParent()
    {
        SFixture f;
        f.parent.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f.parent));
        QVERIFY(f.pLayer->isVisible());
    }

    void itPaintsTheDrawingInOrderAndThenTheWaitingObject()
    {
        SFixture f;
        f.pLayer->SetGeometryModel(&f.model);
        const ObjectPtr pA = MakeRectangle(), pB = MakeRectangle(), pWaiting = MakeRectangle();
        f.model.AddObjectDrawing(pA);
        QCOMPARE(f.pLayer->GetDrawableObjects(), ObjectList{pA});
        f.model.AddObjectDrawingWaiting(pWaiting);
        f.model.AddObjectDrawing(pB);
        QCOMPARE(f.pLayer->GetDrawableObjects(), (ObjectList{pA, pB, pWaiting}));
        f.model.ClearObjectDrawing();
        QCOMPARE(f.pLayer->GetDrawableObjects(), ObjectList{pWaiting});
        f.model.ClearObjectDrawingWaiting();
        QVERIFY(f.pLayer->GetDrawableObjects().empty());
    }

    void finishedObjectsAreNotPaintedButTheirComingAndGoingRefreshesTheList()
    {
        SFixture f;
        const ObjectPtr pDrawing = MakeRectangle();
        f.model.AddObjectDrawing(pDrawing);
        f.pLayer->SetGeometryModel(&f.model); // too late for the signal
        QVERIFY(f.pLayer->GetDrawableObjects().empty());
        const ObjectPtr pFinished = MakeRectangle();
        f.model.AddObject(pFinished);
        QCOMPARE(f.pLayer->GetDrawableObjects(), ObjectList{pDrawing});
        f.pLayer->Clear();
        f.model.DeleteObject(pFinished);
        QCOMPARE(f.pLayer->GetDrawableObjects(), ObjectList{pDrawing});
    }

    void whatLiesBeneathStaysVisible()
    {
        SFixture f;
        f.parent.setStyleSheet(QStringLiteral("background: rgb(10, 20, 30)"));
        f.pLayer->SetGeometryModel(&f.model);
        f.model.AddObjectDrawing(MakeRectangle());
        const QImage picture = ViewReference::Grab(f.parent);
        QCOMPARE(picture.pixelColor(90, 70), QColor(10, 20, 30));
        QCOMPARE(picture.pixelColor(10, 7), QColor(0, 255, 0));
    }

    void withoutAModelNothingHappens()
    {
        SFixture f;
        const ObjectPtr pObject = MakeRectangle();
        f.pLayer->DrawObject(pObject);
        f.pLayer->slot_ChangeDrawingObject();
        QCOMPARE(f.pLayer->GetDrawableObjects(), ObjectList{pObject});
        auto pModel = std::make_unique<CImageView2DGeometryModel>();
        f.pLayer->SetGeometryModel(pModel.get());
        pModel.reset();
        f.pLayer->slot_ChangeDrawingObject();
        QCOMPARE(f.pLayer->GetDrawableObjects(), ObjectList{pObject});
    }

    void anExchangedModelIsNoLongerListenedTo()
    {
        SFixture f;
        CImageView2DGeometryModel other;
        f.pLayer->SetGeometryModel(&f.model);
        f.pLayer->SetGeometryModel(&other);
        const ObjectPtr pObject = MakeRectangle();
        other.AddObjectDrawing(pObject);
        QCOMPARE(f.pLayer->GetDrawableObjects(), ObjectList{pObject});
        // Whatever a layer hears makes its list anew, so an emptied one tells whether it has heard something.
        f.pLayer->Clear();
        f.model.AddObjectDrawing(MakeRectangle());
        const ObjectPtr pFinished = MakeRectangle();
        f.model.AddObject(pFinished);
        f.model.DeleteObject(pFinished);
        f.model.ClearObjectDrawing();
        QVERIFY(f.pLayer->GetDrawableObjects().empty());
        f.pLayer->SetGeometryModel(nullptr);
        other.AddObjectDrawing(MakeRectangle());
        QVERIFY(f.pLayer->GetDrawableObjects().empty());
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DLayer)
#include "tst_CImageView2DLayer.moc"
