// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/EditingBench.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandChangeCurrentImage.h>

#include <QApplication>

using ChangeImage = CImageView2DCommandChangeCurrentImage;
using ImagePtr = ChangeImage::ImagePtr;

namespace
{
std::vector<ImagePtr> Pages(const EditingBench& bench)
{
    std::vector<ImagePtr> vctPages;
    for (int i = 0; i < bench.images.GetImageCount(); ++i)
        vctPages.push_back(bench.images.GetImage(i));
    return vctPages;
}
} // namespace

class tst_CImageView2DCommandChangeCurrentImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void undoPutsBackTheImageThatWasCurrentWhenTheCommandWasMade()
    {
        EditingBench bench;
        bench.images.SetImages({m_old, m_other});
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_new, m_other}));
        bench.history.Undo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_old, m_other}));
        QCOMPARE(bench.images.GetCurrentIndex(), 0);
        bench.history.Redo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_new, m_other}));
    }

    void undoBringsBackTheDroppedAnnotationsInOrderWithTheirSelection()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        const ShapePtr a = MakeRectangle(0, 0, 1, 1);
        const ShapePtr b = MakeRectangle(5, 5, 1, 1);
        const ShapePtr c = MakeRectangle(9, 9, 1, 1);
        for (const ShapePtr& pShape : {a, b, c})
            bench.geometry.AddObject(pShape);
        b->SetSelected(false);
        c->SetMouseOffset(QPointF(0.5, 0.25));
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(bench.geometry.Size(), 0);
            bench.history.Undo();
            QVERIFY((bench.geometry.GetObjects() == std::vector<ObjectPtr>{c, b, a}));
            QVERIFY(a->GetSelected() && !b->GetSelected() && c->GetSelected());
            QCOMPARE(c->GetMouseOffset(), QPointF(0.5, 0.25));
            bench.history.Redo();
        }
    }

    void theSelectionIsThatOfTheMomentOfTheChangeWhateverHappenedToTheDroppedObjects()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        const ShapePtr pShape = MakeRectangle(0, 0, 1, 1);
        bench.geometry.AddObject(pShape);
        pShape->SetSelected(false);
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.ctrl.AddDrawableObject(pShape);
        QVERIFY(pShape->GetSelected());
        bench.history.Undo();
        QCOMPARE(bench.geometry.Size(), 1);
        QVERIFY(!pShape->GetSelected());
    }

    void aRestoredAnnotationIsRelayedOnce()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        const ShapePtr pShape = MakeRectangle(0, 0, 1, 1);
        bench.geometry.AddObject(pShape);
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.history.Undo();
        QSignalSpy spy(&bench.geometry, &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty);
        pShape->SetPen(QPen(Qt::red));
        QCOMPARE(spy.count(), 1);
    }

    void stepsBeforeAndAfterTheChangeUndoAndRedoAsOneChain()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        const ShapePtr a = MakeRectangle(0, 0, 1, 1);
        const ShapePtr b = MakeRectangle(5, 5, 1, 1);
        bench.Run(new CImageView2DCommandAddGeometry(&bench.ctrl, a));
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.Run(new CImageView2DCommandAddGeometry(&bench.ctrl, b));
        bench.history.Undo();
        QCOMPARE(bench.geometry.Size(), 0);
        bench.history.Undo();
        QVERIFY((bench.geometry.GetObjects() == std::vector<ObjectPtr>{a}));
        bench.history.Undo();
        QCOMPARE(bench.geometry.Size(), 0);
        for (int i = 0; i < 3; ++i)
            bench.history.Redo();
        QVERIFY((bench.geometry.GetObjects() == std::vector<ObjectPtr>{b}));
        QCOMPARE(bench.images.GetCurrentImage(), m_new);
    }

    void undoAndRedoSelectThePageWhenAnotherOneIsCurrent()
    {
        EditingBench bench;
        bench.images.SetImages({m_other, m_old, m_third});
        bench.images.SetCurrentIndex(1);
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.images.SetCurrentIndex(2);
        bench.history.Undo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_other, m_old, m_third}));
        QCOMPARE(bench.images.GetCurrentIndex(), 1);
        bench.images.SetCurrentIndex(0);
        bench.history.Redo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_other, m_new, m_third}));
        QCOMPARE(bench.images.GetCurrentIndex(), 1);
    }

    void undoDoesNothingWhenThePageIsGone()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.images.SetImages({m_other});
        const ShapePtr pShape = MakeRectangle(0, 0, 1, 1);
        bench.geometry.AddObject(pShape);
        bench.history.Undo();
        bench.history.Redo();
        bench.history.Undo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_other}));
        QVERIFY((bench.geometry.GetObjects() == std::vector<ObjectPtr>{pShape}));
    }

    void redoDoesNothingWhenThePageIsGone()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.history.Undo();
        bench.images.SetImages({m_other});
        bench.geometry.AddObject(MakeRectangle(0, 0, 1, 1));
        bench.history.Redo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_other}));
        QCOMPARE(bench.geometry.Size(), 1);
    }

    void anUndoThatFoundNoPageCannotBeRedoneOverTheOldImage()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.images.SetImages({m_other});
        bench.history.Undo();
        bench.images.SetImages({m_old});
        bench.history.Redo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_old}));
    }

    void anEmptyListIsEmptyAgainAfterUndo()
    {
        EditingBench bench;
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_new}));
        bench.history.Undo();
        QCOMPARE(bench.images.GetImageCount(), 0);
        bench.history.Redo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_new}));
        QCOMPARE(bench.images.GetCurrentImage(), m_new);
    }

    void withoutACurrentPageUndoBringsBackTheListAsItWas()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        bench.images.CloseCurrentImage();
        bench.images.SetCurrentImage(m_other);
        QCOMPARE(bench.images.GetCurrentIndex(), -1); // a list with an image, none of which is current
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_new}));
        bench.history.Undo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_other}));
    }

    void redoIntoAListThatWasEmptyDoesNotReplaceWhatWasLoadedMeanwhile()
    {
        EditingBench bench;
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        bench.history.Undo();
        bench.images.SetImages({m_other});
        bench.history.Redo();
        bench.history.Undo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_other}));
    }

    void aPageWithoutAnImageIsEmptyAgainAfterUndo()
    {
        EditingBench bench;
        bench.images.SetImages({nullptr, m_other});
        bench.Run(new ChangeImage(&bench.ctrl, m_new));
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_new, m_other}));
        bench.history.Undo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{nullptr, m_other}));
    }

    void withoutANewImageOrAControllerNothingHappens()
    {
        EditingBench bench;
        bench.images.SetImages({m_old});
        bench.geometry.AddObject(MakeRectangle(0, 0, 1, 1));
        bench.Run(new ChangeImage(&bench.ctrl, nullptr));
        bench.Run(new ChangeImage(nullptr, m_new));
        bench.history.Undo();
        bench.history.Undo();
        QVERIFY((Pages(bench) == std::vector<ImagePtr>{m_old}));
        QCOMPARE(bench.geometry.Size(), 1);
    }

private:
    const ImagePtr m_old = MakeTestImage(8, 6, 1, 1);
    const ImagePtr m_new = MakeTestImage(6, 8, 1, 2);
    const ImagePtr m_other = MakeTestImage(5, 5, 3, 3);
    const ImagePtr m_third = MakeTestImage(4, 4, 3, 4);
};

VANTOR_TEST_MAIN(tst_CImageView2DCommandChangeCurrentImage)
#include "tst_CImageView2DCommandChangeCurrentImage.moc"
