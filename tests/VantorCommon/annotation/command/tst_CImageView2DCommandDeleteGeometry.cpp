// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/EditingBench.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/command/CCommandArray.h>
#include <VantorCommon/annotation/command/CImageView2DCommandDeleteGeometry.h>

#include <QApplication>

using DeleteGeometry = CImageView2DCommandDeleteGeometry;

class tst_CImageView2DCommandDeleteGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void undoBringsBackTheSameObject()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(1, 2, 3, 4);
        bench.geometry.AddObject(pShape);
        bench.Run(new DeleteGeometry(&bench.ctrl, pShape));
        QCOMPARE(bench.geometry.Size(), 0);
        bench.history.Undo();
        QCOMPARE(bench.geometry.Size(), 1);
        QCOMPARE(bench.geometry.GetAt(0), ObjectPtr(pShape));
        bench.history.Redo();
        QCOMPARE(bench.geometry.Size(), 0);
    }

    void threeDeletedInOneStepComeBackWithOneUndo()
    {
        EditingBench bench;
        auto* pArray = new CCommandArray;
        std::vector<ObjectPtr> vctShapes;
        for (int i = 0; i < 3; ++i) {
            vctShapes.push_back(MakeRectangle(i, i, 3, 4));
            bench.geometry.AddObject(vctShapes.back());
        }
        const auto vctBefore = bench.geometry.GetObjects();
        for (const ObjectPtr& pObject : vctBefore)
            pArray->addCommand(new DeleteGeometry(&bench.ctrl, pObject));
        bench.Run(pArray);
        QCOMPARE(bench.geometry.Size(), 0);
        bench.history.Undo();
        QVERIFY(bench.geometry.GetObjects() == vctBefore);
    }

    void withoutAnObjectOrAControllerNothingHappens()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(1, 2, 3, 4);
        bench.geometry.AddObject(pShape);
        bench.Run(new DeleteGeometry(&bench.ctrl, nullptr));
        bench.Run(new DeleteGeometry(nullptr, pShape));
        bench.history.Undo();
        bench.history.Undo();
        QCOMPARE(bench.geometry.Size(), 1);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DCommandDeleteGeometry)
#include "tst_CImageView2DCommandDeleteGeometry.moc"
