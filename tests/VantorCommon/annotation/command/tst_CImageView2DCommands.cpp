// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The steps of the 2D view, with a real controller.
#include "tests/support/TestMain.h"

#include "tests/support/TestImages.h"
#include "tests/support/ViewInput.h"

#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/command/CCommandContainer.h>
#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandChangeCurrentImage.h>
#include <VantorCommon/annotation/command/CImageView2DCommandDeleteGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandMoveGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandResizeGeometry.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>

using namespace Vantor::Geometry;
using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;
using GeometryObjectPtr = std::shared_ptr<CImageView2DDrawableGeometry>;
using ObjectList = CImageView2DGeometryModel::ObjectList;
using Add = CImageView2DCommandAddGeometry;
using Delete = CImageView2DCommandDeleteGeometry;
using Move = CImageView2DCommandMoveGeometry;
using Resize = CImageView2DCommandResizeGeometry;
using ChangeImage = CImageView2DCommandChangeCurrentImage;

namespace
{
GeometryObjectPtr MakeRectangle(double x, double y, double w, double h)
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<CRectangle>(x, y, w, h));
    return pObject;
}

QRectF Box(const GeometryObjectPtr& pObject)
{
    const auto& box = dynamic_cast<const CBox&>(*pObject->GetData());
    return {box.x(), box.y(), box.width(), box.height()}; // raw, with its signs
}

/// A controller over a list of three pages, whose view shows one image pixel as four.
struct SFixture {
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    QWidget window;
    CImageView2D* pView = new CImageView2D(&model, &geometry, &tools, 0, &window);
    CImageView2DCtrl ctrl{&model, &geometry, &tools, pView, nullptr, nullptr, nullptr};
    std::vector<ImagePtr> pages{MakeTestImage(100, 75, 3), MakeTestImage(50, 40, 1),
                                MakeTestImage(30, 30, 4)};

    SFixture()
    {
        model.SetImages(pages);
        window.resize(400, 300);
        pView->resize(400, 300);
        QResizeEvent event(pView->size(), pView->size());
        QApplication::sendEvent(pView, &event);
    }

    std::vector<ImagePtr> List() const
    {
        std::vector<ImagePtr> images;
        for (int i = 0; i < model.GetImageCount(); ++i)
            images.push_back(model.GetImage(i));
        return images;
    }
    void Zoom(int nNotches) { ViewInput::Wheel(*pView, QPointF(17, 23), nNotches * 120); }
};
} // namespace

class tst_CImageView2DCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addUndoRedoBringsTheSameObjectWithIdentifierAndName()
    {
        SFixture f;
        const auto pObject = MakeRectangle(1, 2, 3, 4);
        const unsigned int nUID = pObject->GetUID();
        const QString strName = pObject->GetName();
        CCommandContainer container;
        auto* pCommand = new Add(&f.ctrl, pObject);
        container.PushUndo(pCommand);
        QCOMPARE(f.geometry.Size(), 0); // pushed, not executed
        pCommand->exec();
        QCOMPARE(f.geometry.GetObjects(), ObjectList{pObject});
        container.Undo();
        QCOMPARE(f.geometry.Size(), 0);
        container.Redo();
        QCOMPARE(f.geometry.GetAt(0).get(), pObject.get());
        QCOMPARE(f.geometry.GetAt(0)->GetUID(), nUID);
        QCOMPARE(f.geometry.GetAt(0)->GetName(), strName);
    }

    void addSelectsTheNewObjectAlone()
    {
        SFixture f;
        const auto pA = MakeRectangle(1, 2, 3, 4), pB = MakeRectangle(5, 6, 7, 8);
        Add(&f.ctrl, pA).exec();
        Add(&f.ctrl, pB).exec();
        QVERIFY(!pA->GetSelected());
        QVERIFY(pB->GetSelected());
    }

    void addAUndoAddBRedoGivesBoth()
    {
        SFixture f;
        CCommandContainer container;
        const auto pA = MakeRectangle(1, 2, 3, 4), pB = MakeRectangle(5, 6, 7, 8);
        auto* pAddA = new Add(&f.ctrl, pA);
        container.PushUndo(pAddA);
        pAddA->exec();
        container.Undo();
        auto* pAddB = new Add(&f.ctrl, pB);
        container.PushUndo(pAddB);
        pAddB->exec();
        container.Redo();
        QCOMPARE(f.geometry.GetObjects(), (ObjectList{pA, pB}));
    }

    void deleteUndoBringsTheSameObjectBack()
    {
        SFixture f;
        const auto pObject = MakeRectangle(1, 2, 3, 4);
        f.geometry.AddObject(pObject);
        Delete command(&f.ctrl, pObject);
        command.exec();
        QCOMPARE(f.geometry.Size(), 0);
        command.undo();
        QCOMPARE(f.geometry.GetObjects(), ObjectList{pObject});
        command.redo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void moveTakesTheMouseOffsetIntoAccount()
    {
        SFixture f;
        const auto pObject = MakeRectangle(10, 20, 30, -15); // upwards: its top is 5
        Move command(&f.ctrl, pObject, QPointF(12, 8), QPointF(42, 28), 2, 3);
        command.exec();
        QCOMPARE(Box(pObject), QRectF(40, 40, 30, -15));
        command.undo();
        QCOMPARE(Box(pObject), QRectF(10, 20, 30, -15));
        command.redo();
        QCOMPARE(Box(pObject), QRectF(40, 40, 30, -15));
    }

    void moveUndoIsExactToTheLastBit()
    {
        SFixture f;
        const auto pObject = MakeRectangle(0.1, 0.2, 0.3, 0.7);
        Move command(&f.ctrl, pObject, QPointF(0.1, 0.2), QPointF(1e9 / 3, 7e8 / 9), 0, 0);
        command.exec();
        command.undo();
        const QRectF box = Box(pObject);
        QVERIFY(box.x() == 0.1 && box.y() == 0.2 && box.width() == 0.3 && box.height() == 0.7);
    }

    void undoingAResizeFindsTheHandleAtItsNewPlaceAndMovesItBackToTheOldOne()
    {
        SFixture f;
        const auto pObject = MakeRectangle(10, 10, 20, 20);
        Resize command(&f.ctrl, pObject, QPointF(30, 30), QPointF(45, 50), QPointF(1, 2));
        command.exec();
        QCOMPARE(Box(pObject), QRectF(10, 10, 35, 40));
        command.undo();
        QCOMPARE(Box(pObject), QRectF(10, 10, 20, 20));
        command.redo();
        QCOMPARE(Box(pObject), QRectF(10, 10, 35, 40));
    }

    void resizeUndoIsExactAfterALaterZoom()
    {
        for (const int nNotches : {-15, 40}) {
            SFixture f;
            const auto pObject = MakeRectangle(10, 10, 20, 20);
            // Taken a little beside the handle, within reach at this zoom.
            Resize command(&f.ctrl, pObject, QPointF(31.5, 31), QPointF(45, 50), QPointF());
            command.exec();
            const QRectF after = Box(pObject);
            QVERIFY(after != QRectF(10, 10, 20, 20));
            f.Zoom(nNotches);
            command.undo();
            QCOMPARE(Box(pObject), QRectF(10, 10, 20, 20));
            f.Zoom(-nNotches / 2);
            command.redo();
            QCOMPARE(Box(pObject), after);
            f.pView->resize(40, 30);
            QResizeEvent event(QSize(40, 30), QSize(40, 30));
            QApplication::sendEvent(f.pView, &event);
            command.undo();
            QCOMPARE(Box(pObject), QRectF(10, 10, 20, 20));
        }
    }

    void resizeUndoIsExactForAShapeOfTwoPixels()
    {
        SFixture f;
        for (const QPointF& target :
             {QPointF(12, 12), QPointF(10, 10), QPointF(9, 11), QPointF(10.5, 10.5)}) {
            const auto pObject = MakeRectangle(10, 10, 2, 2); // every handle within reach of every other
            Resize command(&f.ctrl, pObject, QPointF(12, 12), target, QPointF());
            command.exec();
            const QRectF after = Box(pObject);
            for (int i = 0; i < 3; ++i) {
                command.undo();
                QCOMPARE(Box(pObject), QRectF(10, 10, 2, 2));
                command.redo();
                QCOMPARE(Box(pObject), after);
            }
        }
    }

    void aResizeDoneLiveIsNotDoneTwice()
    {
        SFixture f;
        const auto pObject = MakeRectangle(10, 10, 20, 20);
        const auto pBefore = pObject->GetData()->Clone();
        pObject->MoveResizePoint(QPointF(30, 30), QPointF(33, 34));
        Resize command(&f.ctrl, pObject, QPointF(30, 30), QPointF(33, 34), QPointF(), pBefore);
        command.exec();
        QCOMPARE(Box(pObject), QRectF(10, 10, 23, 24));
        command.undo();
        QCOMPARE(Box(pObject), QRectF(10, 10, 20, 20));
        command.redo();
        QCOMPARE(Box(pObject), QRectF(10, 10, 23, 24));
    }

    void withoutAnObjectOrAnImageACommandDoesNothing()
    {
        SFixture f;
        Add add(&f.ctrl, nullptr);
        Delete del(&f.ctrl, nullptr);
        Move move(&f.ctrl, nullptr, QPointF(), QPointF(1, 1), 0, 0);
        Resize resize(&f.ctrl, nullptr, QPointF(), QPointF(1, 1), QPointF());
        ChangeImage change(&f.ctrl, nullptr);
        Add lost(nullptr, MakeRectangle(0, 0, 1, 1));
        ChangeImage lostImage(nullptr, MakeTestImage(2, 2, 1));
        f.geometry.AddObject(MakeRectangle(0, 0, 1, 1));
        for (CCommand* p :
             std::initializer_list<CCommand*>{&add, &del, &move, &resize, &change, &lost, &lostImage}) {
            p->exec();
            p->undo();
            p->redo();
        }
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(f.List(), f.pages);
    }

    void theSecondImageIsTheOneThatWasCurrentWhenTheCommandWasMade()
    {
        SFixture f;
        const ImagePtr pNew = MakeTestImage(9, 9, 3);
        ChangeImage command(&f.ctrl, pNew);
        f.model.SetCurrentIndex(2);
        command.exec(); // on the page of then
        QCOMPARE(f.List(), (std::vector<ImagePtr>{pNew, f.pages[1], f.pages[2]}));
        command.undo();
        QCOMPARE(f.List(), f.pages);
    }

    void undoOfAnImageChangeSelectsThePageThatHoldsTheNewImage()
    {
        SFixture f;
        f.model.SetCurrentIndex(1);
        const ImagePtr pNew = MakeTestImage(9, 9, 3);
        ChangeImage command(&f.ctrl, pNew);
        command.exec();
        QCOMPARE(f.model.GetCurrentImage(), pNew);
        f.model.SetCurrentIndex(2);
        command.undo();
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        QCOMPARE(f.List(), f.pages);
        f.model.SetCurrentIndex(0);
        command.redo();
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        QCOMPARE(f.model.GetCurrentImage(), pNew);
    }

    void undoOfAnImageChangeBringsTheAnnotationsBackInOrderWithTheirSelection()
    {
        SFixture f;
        ObjectList objects;
        for (int i = 0; i < 4; ++i) {
            objects.insert(objects.begin(), MakeRectangle(i, i, 5, 5));
            f.geometry.AddObject(objects.front());
        }
        for (int i = 0; i < 4; ++i)
            objects[size_t(i)]->SetSelected(i == 2);
        ChangeImage command(&f.ctrl, MakeTestImage(9, 9, 3));
        for (int nRound = 0; nRound < 2; ++nRound) {
            command.redo();
            QCOMPARE(f.geometry.Size(), 0);
            objects[0]->SetSelected(true); // meanwhile
            command.undo();
            QCOMPARE(f.geometry.GetObjects(), objects);
            for (int i = 0; i < 4; ++i)
                QCOMPARE(objects[size_t(i)]->GetSelected(), i == 2);
        }
        int nSignals = 0; // the relay is back, once
        connect(&f.geometry, &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty, &f.geometry,
                [&] { ++nSignals; });
        objects[1]->SetSelected(true);
        QCOMPARE(nSignals, 1);
    }

    void undoOfAnImageChangeDoesNothingWhenThePageIsGone()
    {
        SFixture f;
        f.geometry.AddObject(MakeRectangle(1, 1, 5, 5));
        ChangeImage command(&f.ctrl, MakeTestImage(9, 9, 3));
        command.exec();
        f.ctrl.CloseCurrentImage();
        const auto pKept = MakeRectangle(2, 2, 5, 5);
        f.geometry.AddObject(pKept);
        const int nIndex = f.model.GetCurrentIndex();
        command.undo();
        QCOMPARE(f.List(), (std::vector<ImagePtr>{f.pages[1], f.pages[2]}));
        QCOMPARE(f.model.GetCurrentIndex(), nIndex);
        QCOMPARE(f.geometry.GetObjects(), ObjectList{pKept});
    }

    void anImageChangeWithoutACurrentImageCanBeUndone()
    {
        SFixture f;
        f.model.Clear();
        const ImagePtr pNew = MakeTestImage(9, 9, 3);
        ChangeImage command(&f.ctrl, pNew);
        command.exec();
        QCOMPARE(f.List(), std::vector<ImagePtr>{pNew});
        command.undo();
        QVERIFY(f.List().empty());
        QVERIFY(!f.model.GetCurrentImage());
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DCommands)
#include "tst_CImageView2DCommands.moc"
