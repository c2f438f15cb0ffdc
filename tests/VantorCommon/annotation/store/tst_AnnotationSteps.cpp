// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The steps of CAnnotationStore, and what locked and invisible objects do under the mouse.
#include <Vantor/geometry/CCircle.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QMenu>

using namespace Vantor::Geometry;
using ObjectPtr = EditFixture::ObjectPtr;
using Objects = std::vector<ObjectPtr>;

class tst_AnnotationSteps : public QObject
{
    Q_OBJECT

private:
    static CAnnotationStore& Store(EditFixture& f) { return *f.ctrl->GetAnnotationStore(); }
    static QImage Shot(EditFixture& f) { return f.view->grab().toImage(); }

private Q_SLOTS:
    void aNameIsGivenAndTakenBack()
    {
        EditFixture f;
        const ObjectPtr pObject = f.AddRectangle(1, 2, 3, 4);
        const QString strFirst = pObject->GetName();
        Store(f).Rename(pObject, QStringLiteral("door"));
        Store(f).Rename(pObject, QStringLiteral("window"));
        QCOMPARE(pObject->GetName(), QStringLiteral("window"));
        f.PressUndo();
        QCOMPARE(pObject->GetName(), QStringLiteral("door"));
        f.PressUndo();
        QCOMPARE(pObject->GetName(), strFirst);
        QVERIFY(!pObject->IsNamed());
        f.PressRedo();
        QCOMPARE(pObject->GetName(), QStringLiteral("door"));
        Store(f).Rename(pObject, QString());
        QCOMPARE(pObject->GetName(), strFirst);
        f.PressUndo();
        QCOMPARE(pObject->GetName(), QStringLiteral("door"));
    }

    void aStepThatIsMadeAgainGivesBackWhatItFoundThen()
    {
        EditFixture f;
        const ObjectPtr pObject = f.AddRectangle(1, 2, 3, 4);
        const ObjectPtr pOther = f.AddRectangle(5, 6, 7, 8);
        const auto makeAgainOnTopOf = [&](const std::function<void()>& first,
                                          const std::function<void()>& other, const auto& value) {
            first();
            f.PressUndo();
            other();
            const auto found = value();
            f.PressRedo();
            const bool bMade = value() != found;
            f.PressUndo();
            return bMade && value() == found;
        };
        QVERIFY(makeAgainOnTopOf([&] { Store(f).Rename(pObject, QStringLiteral("door")); },
                                 [&] { Store(f).Rename(pObject, QStringLiteral("wall")); },
                                 [&] { return pObject->GetName(); }));
        QVERIFY(makeAgainOnTopOf(
            [&] {
                Store(f).SetShape(pObject, {{1, 1, 1, 1}, {}});
            },
            [&] {
                Store(f).SetShape(pObject, {{2, 2, 2, 2}, {}});
            },
            [&] { return EditFixture::BoxOf(pObject); }));
        QVERIFY(makeAgainOnTopOf([&] { Store(f).MoveTo({pObject}, 0); },
                                 [&] {
                                     Store(f).Duplicate({pOther}, {1, 1});
                                 },
                                 [&] { return f.geometry.GetObjects(); }));
        QVERIFY(makeAgainOnTopOf(
            [&] {
                Store(f).SetLocked({pObject, pOther}, true);
            },
            [&] { Store(f).SetLocked({pOther}, true); },
            [&] { return std::make_pair(pObject->IsLocked(), pOther->IsLocked()); }));
    }

    void numbersGiveAnotherShape()
    {
        EditFixture f;
        const ObjectPtr pBox = f.AddRectangle(0.1, 0.1, 0.2, 0.2);
        f.ShapeOf<CRectangle>(pBox)->SetBottomRight({0.3, 0.3});
        const CRectangle before = *f.ShapeOf<CRectangle>(pBox);
        QVERIFY(Store(f).SetShape(pBox, {{5, 6, -7, 8}, {}}));
        QCOMPARE(f.BoxOf(pBox), QRectF(5, 6, -7, 8));
        f.PressUndo();
        const auto pBack = f.ShapeOf<CRectangle>(pBox);
        QVERIFY(pBack->width() == before.width() && pBack->bottomRight() == before.bottomRight());
        f.PressRedo();
        QCOMPARE(f.BoxOf(pBox), QRectF(5, 6, -7, 8));
        QVERIFY(!Store(f).SetShape(pBox, {{5, 6, 7}, {}}));
        QVERIFY(!Store(f).SetShape(pBox, {{5, 6, 7, qQNaN()}, {}}));
        QCOMPARE(f.BoxOf(pBox), QRectF(5, 6, -7, 8));
    }

    void aCircleAndATextTakeNumbersToo()
    {
        EditFixture f;
        const ObjectPtr pCircle = f.Add(std::make_shared<CCircle>(CPoint<double>(5, 5), 2.0));
        QVERIFY(Store(f).SetShape(pCircle, {{6, 7, 3}, {}}));
        QCOMPARE(pCircle->GetBoundary(), QRectF(3, 4, 6, 6));
        const auto pText = std::make_shared<CImageView2DDrawableText>();
        pText->SetText(QStringLiteral("a"));
        f.geometry.AddObject(pText);
        QVERIFY(Store(f).SetShape(pText, {{6, 7, 30}, QStringLiteral("b")}));
        QCOMPARE(pText->GetPosition(), QPointF(6, 7));
        QCOMPARE(pText->GetLineHeight(), 30.0);
        QCOMPARE(pText->GetText(), QStringLiteral("b"));
        f.PressUndo();
        QCOMPARE(pText->GetPosition(), QPointF(0, 0));
        QCOMPARE(pText->GetLineHeight(), 16.0);
        QCOMPARE(pText->GetText(), QStringLiteral("a"));
    }

    void objectsChangeTheirPlacesInTheOrder()
    {
        EditFixture f;
        const ObjectPtr d = f.AddRectangle(1, 2, 3, 4);
        const ObjectPtr c = f.AddRectangle(1, 2, 3, 4);
        const ObjectPtr b = f.AddRectangle(1, 2, 3, 4);
        const ObjectPtr a = f.AddRectangle(1, 2, 3, 4);
        const auto order = [&] { return f.geometry.GetObjects(); };
        Store(f).MoveTo({d, b}, 1);
        QCOMPARE(order(), (Objects{a, b, d, c}));
        f.PressUndo();
        QCOMPARE(order(), (Objects{a, b, c, d}));
        Store(f).Raise({a, d});
        QCOMPARE(order(), (Objects{a, b, d, c}));
        Store(f).Raise({b, d});
        QCOMPARE(order(), (Objects{b, d, a, c}));
        Store(f).Lower({d, a});
        QCOMPARE(order(), (Objects{b, c, d, a}));
        Store(f).MoveTo({b}, 99);
        QCOMPARE(order(), (Objects{c, d, a, b}));
        Store(f).SetSaved();
        Store(f).Lower({b}); // the lowest already
        QVERIFY(!Store(f).HasUnsaved());
        for (int i = 0; i < 4; ++i)
            f.PressUndo();
        QCOMPARE(order(), (Objects{a, b, c, d}));
    }

    void anObjectThatCameMeanwhileStaysOnTopWhenAnOrderIsRedone()
    {
        EditFixture f;
        const ObjectPtr b = f.AddRectangle(1, 2, 3, 4);
        const ObjectPtr a = f.AddRectangle(1, 2, 3, 4);
        Store(f).Lower({a});
        f.PressUndo();
        const ObjectPtr pNew = f.AddRectangle(1, 2, 3, 4);
        f.PressRedo();
        QCOMPARE(f.geometry.GetObjects(), (Objects{pNew, b, a}));
    }

    void anotherOrderIsPainted()
    {
        EditFixture f;
        const ObjectPtr pLow = f.AddRectangle(20, 20, 60, 60);
        const ObjectPtr pHigh = f.AddRectangle(40, 40, 60, 60);
        pLow->SetSelected(true);
        const QImage before = Shot(f);
        Store(f).Raise({pLow});
        QVERIFY(Shot(f) != before);
        f.PressUndo();
        QCOMPARE(Shot(f), before);
    }

    void aLockedObjectStaysUnderTheMouse()
    {
        EditFixture f;
        const ObjectPtr pObject = f.AddRectangle(20, 20, 60, 60);
        Store(f).SetLocked({pObject}, true);
        f.Drag({50, 50}, {90, 90});
        QVERIFY(pObject->GetSelected());
        QCOMPARE(f.BoxOf(pObject), QRectF(20, 20, 60, 60));
        f.Drag({20, 20}, {10, 10}); // its handle
        QCOMPARE(f.BoxOf(pObject), QRectF(20, 20, 60, 60));
        pObject->SetSelected(true);
        f.Key(Qt::Key_Delete);
        QCOMPARE(f.geometry.Size(), 1);
        f.PressUndo();
        QVERIFY(!pObject->IsLocked());
        f.Drag({50, 50}, {60, 60});
        QCOMPARE(f.BoxOf(pObject), QRectF(30, 30, 60, 60));
    }

    void aLockedObjectDoesNotHoldTheOthers()
    {
        EditFixture f;
        const ObjectPtr pLocked = f.AddRectangle(20, 20, 40, 40);
        const ObjectPtr pFree = f.AddRectangle(80, 20, 40, 40);
        pLocked->SetLocked(true);
        pLocked->SetSelected(true);
        pFree->SetSelected(true);
        f.Drag({100, 40}, {110, 50});
        QCOMPARE(f.BoxOf(pLocked), QRectF(20, 20, 40, 40));
        QCOMPARE(f.BoxOf(pFree), QRectF(90, 30, 40, 40));
        f.Key(Qt::Key_Delete);
        QCOMPARE(f.geometry.GetObjects(), Objects{pLocked});
    }

    void anInvisibleObjectIsNeitherPaintedNorHit()
    {
        EditFixture f;
        const QImage empty = Shot(f);
        const ObjectPtr pObject = f.AddRectangle(20, 20, 60, 60);
        pObject->SetSelected(true);
        QVERIFY(Shot(f) != empty);
        Store(f).SetVisible({pObject}, false);
        QVERIFY(!pObject->GetSelected());
        QCOMPARE(Shot(f), empty);
        f.Click({50, 50});
        QVERIFY(!pObject->GetSelected());
        f.Drag({10, 10}, {100, 100}); // a band around it
        QVERIFY(!pObject->GetSelected());
        f.Drag({20, 20}, {10, 10}); // its handle
        QCOMPARE(f.BoxOf(pObject), QRectF(20, 20, 60, 60));
        f.PressUndo();
        QVERIFY(pObject->IsVisible());
        f.Click({50, 50});
        QVERIFY(pObject->GetSelected());
    }

    void theMenuOfAnInvisibleObjectIsThatOfTheImage()
    {
        EditFixture f;
        const ObjectPtr pObject = f.AddRectangle(20, 20, 60, 60);
        pObject->SetVisible(false);
        f.ctrl->slot_ShowContextMenu({50, 50});
        QTRY_VERIFY(QApplication::activePopupWidget());
        QVERIFY(!pObject->GetSelected());
        QApplication::activePopupWidget()->close();
    }

    void aCopyHasAnIdOfItsOwnAndIsSelectedAlone()
    {
        EditFixture f;
        const ObjectPtr pNamed = f.AddRectangle(20, 20, 30, 30);
        pNamed->SetName(QStringLiteral("door"));
        pNamed->SetPen(QPen(Qt::blue));
        const ObjectPtr pOther = f.AddRectangle(60, 20, -30, 30);
        pNamed->SetSelected(true);
        const auto vctCopies = Store(f).Duplicate({pNamed, pOther}, {5, 6});
        QCOMPARE(vctCopies.size(), std::size_t(2));
        QCOMPARE(f.geometry.GetObjects(), (Objects{vctCopies[0], vctCopies[1], pOther, pNamed}));
        QCOMPARE(f.BoxOf(vctCopies[0]), QRectF(65, 26, -30, 30));
        QCOMPARE(f.BoxOf(vctCopies[1]), QRectF(25, 26, 30, 30));
        QCOMPARE(vctCopies[1]->GetName(), QStringLiteral("door"));
        QCOMPARE(vctCopies[1]->GetPen().color(), QColor(Qt::blue));
        QVERIFY(vctCopies[1]->GetId() != pNamed->GetId());
        QVERIFY(vctCopies[0]->GetName() != pOther->GetName());
        QCOMPARE(f.Selected(), vctCopies);
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), (Objects{pOther, pNamed}));
        f.PressRedo();
        QCOMPARE(f.geometry.GetObjects(), (Objects{vctCopies[0], vctCopies[1], pOther, pNamed}));
    }

    void whatIsNotInTheViewMakesNoStep()
    {
        EditFixture f;
        const ObjectPtr pForeign = ShapeKinds::Wrap(std::make_shared<CRectangle>(1, 2, 3, 4));
        Store(f).Rename(pForeign, QStringLiteral("x"));
        Store(f).Rename(nullptr, QStringLiteral("x"));
        Store(f).SetLocked({pForeign, nullptr}, true);
        Store(f).Raise({pForeign});
        Store(f).MoveTo({}, 0);
        QVERIFY(!Store(f).SetShape(pForeign, {{1, 1, 1, 1}, {}}));
        QVERIFY(Store(f).Duplicate({pForeign}, {}).empty());
        QVERIFY(!f.ctrl->CanUndo());
    }
};

VANTOR_TEST_MAIN(tst_AnnotationSteps)
#include "tst_AnnotationSteps.moc"
