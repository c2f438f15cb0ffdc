// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/EditingBench.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>

#include <QApplication>

using AddGeometry = CImageView2DCommandAddGeometry;

class tst_CImageView2DCommandAddGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void undoAndRedoBringBackTheSameObject()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(1, 2, 3, 4);
        const unsigned int nUID = pShape->GetUID();
        const QString strName = pShape->GetName();
        bench.Run(new AddGeometry(&bench.ctrl, pShape));
        QCOMPARE(bench.geometry.GetAt(0), ObjectPtr(pShape));
        bench.history.Undo();
        QCOMPARE(bench.geometry.Size(), 0);
        bench.history.Redo();
        QCOMPARE(bench.geometry.Size(), 1);
        QCOMPARE(bench.geometry.GetAt(0), ObjectPtr(pShape));
        QCOMPARE(bench.geometry.GetAt(0)->GetUID(), nUID);
        QCOMPARE(bench.geometry.GetAt(0)->GetName(), strName);
    }

    void theCommandKeepsTheObjectAlive()
    {
        EditingBench bench;
        ShapePtr pShape = MakeRectangle(1, 2, 3, 4);
        const unsigned int nUID = pShape->GetUID();
        bench.Run(new AddGeometry(&bench.ctrl, pShape));
        pShape.reset();
        bench.history.Undo();
        bench.history.Redo();
        QVERIFY(bench.geometry.FindObject(nUID) != nullptr);
    }

    void addAUndoAddBRedoHasBothInTheModel()
    {
        EditingBench bench;
        const ShapePtr a = MakeRectangle(0, 0, 1, 1);
        const ShapePtr b = MakeRectangle(5, 5, 1, 1);
        bench.Run(new AddGeometry(&bench.ctrl, a));
        bench.history.Undo();
        bench.Run(new AddGeometry(&bench.ctrl, b));
        bench.history.Redo();
        QVERIFY((bench.geometry.GetObjects() == std::vector<ObjectPtr>{a, b}));
    }

    void anUndoneAndRedoneObjectIsRelayedOnce()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(0, 0, 1, 1);
        bench.Run(new AddGeometry(&bench.ctrl, pShape));
        bench.history.Undo();
        bench.history.Redo();
        QSignalSpy spy(&bench.geometry, &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty);
        pShape->SetPen(QPen(Qt::red));
        QCOMPARE(spy.count(), 1);
    }

    void withoutAnObjectOrAControllerNothingHappens()
    {
        EditingBench bench;
        bench.Run(new AddGeometry(&bench.ctrl, nullptr));
        bench.Run(new AddGeometry(nullptr, MakeRectangle(0, 0, 1, 1)));
        bench.history.Undo();
        bench.history.Undo();
        QCOMPARE(bench.geometry.Size(), 0);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DCommandAddGeometry)
#include "tst_CImageView2DCommandAddGeometry.moc"
