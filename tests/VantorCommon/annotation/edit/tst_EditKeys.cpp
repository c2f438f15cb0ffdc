// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// SCenterOptions::bEditKeys: keys that edit annotations.
#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QClipboard>
#include <QElapsedTimer>
#include <QMimeData>

using namespace Vantor::Geometry;
using ObjectPtr = EditFixture::ObjectPtr;
using Objects = std::vector<ObjectPtr>;

namespace
{
const auto kType = QStringLiteral("application/x-vantor-annotations");

class CKeys : public EditFixture
{
public:
    explicit CKeys(bool bOn = true)
    {
        SCenterOptions sOptions;
        sOptions.bEditKeys = bOn;
        ctrl->SetOptions(sOptions);
    }
    ObjectPtr AddSelected(double x, double y, double width, double height)
    {
        const ObjectPtr pObject = AddRectangle(x, y, width, height);
        pObject->SetSelected(true);
        return pObject;
    }
    /// The corners of the topmost polygon.
    QList<QPointF> Polygon() const
    {
        QList<QPointF> lstCorners;
        if (const auto pPolygon = ShapeOf<CPolygon>(geometry.GetAt(0)))
            for (const auto& vertex : pPolygon->GetVertices())
                lstCorners << QPointF(vertex.x(), vertex.y());
        return lstCorners;
    }
    /// The press and the release have Shift.
    void ShiftDrag(const QPointF& start, const QPointF& end)
    {
        Move(start);
        Press(start, Qt::LeftButton, Qt::ShiftModifier);
        Move(end);
        Release(end, Qt::LeftButton, Qt::ShiftModifier);
    }
    const QMimeData* Clipboard() const { return QGuiApplication::clipboard()->mimeData(); }
};
} // namespace

class tst_EditKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QGuiApplication::clipboard()->clear(); }

    void withoutTheOptionNothingOfItHappens()
    {
        CKeys f(false);
        const ObjectPtr pBox = f.AddSelected(20, 20, 40, 30);
        f.Key(Qt::Key_Right);
        f.Key(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(f.BoxOf(pBox), QRectF(20, 20, 40, 30));
        QCOMPARE(f.geometry.Size(), 1);
        f.Key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(f.Clipboard()->hasImage());
        QVERIFY(!f.Clipboard()->hasFormat(kType));
        pBox->SetSelected(false);
        f.Key(Qt::Key_A, Qt::ControlModifier);
        QVERIFY(f.Selected().empty());
        f.Choose("Rect");
        f.ShiftDrag({100, 100}, {140, 120});
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(100, 100, 40, 20));
        f.Choose("Polygon");
        for (const QPointF& corner : {QPointF(10, 10), QPointF(60, 10), QPointF(60, 60)})
            f.Click(corner);
        f.Key(Qt::Key_Return);
        QCOMPARE(f.geometry.Size(), 2);
        f.Key(Qt::Key_Escape);
        QVERIFY(!f.geometry.GetObjectDrawing().empty());
    }

    void arrowsMoveWhatIsSelectedAndABurstIsOneStep()
    {
        CKeys f;
        const ObjectPtr pBox = f.AddSelected(20.1, 20.2, 40.3, 30.4);
        const ObjectPtr pOther = f.AddRectangle(100, 100, 10, 10);
        const ObjectPtr pLocked = f.AddSelected(5, 5, 5, 5);
        pLocked->SetLocked(true);
        const CRectangle before = *f.ShapeOf<CRectangle>(pBox);
        f.Key(Qt::Key_Right);
        f.Key(Qt::Key_Right);
        f.Key(Qt::Key_Down, Qt::ShiftModifier);
        f.Key(Qt::Key_Left);
        f.Key(Qt::Key_Up);
        QCOMPARE(f.BoxOf(pBox).topLeft(), QPointF(21.1, 29.2));
        QCOMPARE(f.BoxOf(pOther), QRectF(100, 100, 10, 10));
        QCOMPARE(f.BoxOf(pLocked), QRectF(5, 5, 5, 5));
        f.PressUndo();
        const auto pBack = f.ShapeOf<CRectangle>(pBox);
        QVERIFY(pBack->x() == before.x() && pBack->y() == before.y() && pBack->width() == before.width());
        QVERIFY(!f.ctrl->CanUndo());
        f.PressRedo();
        QCOMPARE(f.BoxOf(pBox).topLeft(), QPointF(21.1, 29.2));
        QVERIFY(!f.ctrl->CanRedo());
    }

    void aMoveByArrowsIsUnsavedUntilItIsTakenBack()
    {
        CKeys f;
        f.ctrl->GetAnnotationStore()->Duplicate({f.AddRectangle(1, 1, 9, 9)}, {5, 5});
        f.ctrl->GetAnnotationStore()->SetSaved();
        f.Key(Qt::Key_Right);
        f.Key(Qt::Key_Right);
        QVERIFY(f.ctrl->GetAnnotationStore()->HasUnsaved());
        f.PressUndo();
        QVERIFY(!f.ctrl->GetAnnotationStore()->HasUnsaved());
    }

    void whatComesBetweenEndsABurst_data()
    {
        QTest::addColumn<int>("what");
        QTest::newRow("another step") << 0;
        QTest::newRow("undo and redo") << 1;
        QTest::newRow("a press of the mouse") << 2;
        QTest::newRow("another selection") << 3;
        QTest::newRow("a second") << 4;
    }
    void whatComesBetweenEndsABurst()
    {
        QFETCH(int, what);
        CKeys f;
        const ObjectPtr pBox = f.AddSelected(20, 20, 40, 30);
        const ObjectPtr pOther = f.AddRectangle(120, 20, 10, 10);
        f.Key(Qt::Key_Right);
        if (what == 0) {
            f.ctrl->GetAnnotationStore()->Rename(pBox, QStringLiteral("a"));
        } else if (what == 1) {
            f.PressUndo();
            f.PressRedo();
        } else if (what == 2) {
            f.Move({40, 34});
            f.Click({40, 35});
        } else if (what == 3) {
            pOther->SetSelected(true);
        } else {
            QElapsedTimer timer;
            timer.start();
            QTRY_VERIFY(timer.elapsed() > 1000);
        }
        f.Key(Qt::Key_Right);
        QCOMPARE(f.BoxOf(pBox).left(), 22.0);
        f.PressUndo();
        QCOMPARE(f.BoxOf(pBox).left(), 21.0);
        QCOMPARE(f.BoxOf(pOther).left(), 120.0);
    }

    void aTextMovesByArrowsToo()
    {
        CKeys f;
        const auto pText = std::make_shared<CImageView2DDrawableText>();
        pText->SetText(QStringLiteral("a"));
        pText->SetPosition({10, 10});
        f.geometry.AddObject(pText);
        f.Key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(pText->GetPosition(), QPointF(10, 20));
        f.PressUndo();
        QCOMPARE(pText->GetPosition(), QPointF(10, 10));
    }

    void ctrlASelectsWhatIsVisibleAndCtrlDDuplicatesIt()
    {
        CKeys f;
        const ObjectPtr a = f.AddRectangle(10, 10, 20, 20);
        const ObjectPtr b = f.AddRectangle(60, 10, 20, 20);
        const ObjectPtr c = f.AddRectangle(110, 10, 20, 20);
        b->SetVisible(false);
        f.Key(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(f.Selected(), Objects({c, a}));
        QVERIFY(!f.ctrl->CanUndo());
        f.Key(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(f.geometry.Size(), 5);
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(120, 20, 20, 20));
        QCOMPARE(f.BoxOf(f.geometry.GetAt(1)), QRectF(20, 20, 20, 20));
        QCOMPARE(f.Selected(), Objects({f.geometry.GetAt(0), f.geometry.GetAt(1)}));
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), Objects({c, b, a}));
    }

    void annotationsAreCopiedBesideThePictureAndPastedIntoAnotherViewer()
    {
        CKeys f;
        const ObjectPtr pBox = f.AddSelected(20, 20.25, -40, 30);
        f.ctrl->GetAnnotationStore()->Rename(pBox, QStringLiteral("door"));
        f.AddRectangle(1, 1, 5, 5);
        f.Key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(f.Clipboard()->hasImage() && f.Clipboard()->hasFormat(kType));
        QCOMPARE(Vantor::Annotations::FormatOf(f.Clipboard()->data(kType).toStdString(), {}),
                 std::string(Vantor::Annotations::kOwnFormat));
        f.Key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.geometry.Size(), 3);
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(30, 30.25, -40, 30)); // beside the original
        f.host.hide();
        CKeys other;
        other.Key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(other.geometry.Size(), 1);
        QCOMPARE(other.images.GetImageCount(), 1);
        QCOMPARE(other.BoxOf(other.geometry.GetAt(0)), QRectF(20, 20.25, -40, 30));
        QCOMPARE(other.geometry.GetAt(0)->GetName(), QStringLiteral("door"));
        QVERIFY(other.geometry.GetAt(0)->GetId() != pBox->GetId());
        other.PressUndo();
        QCOMPARE(other.geometry.Size(), 0);
    }

    void withoutASelectionThePictureAloneIsCopiedAndPasted()
    {
        CKeys f;
        f.AddRectangle(20, 20, 40, 30);
        f.Key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(f.Clipboard()->hasImage() && !f.Clipboard()->hasFormat(kType));
        f.Key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.images.GetImageCount(), 2);
    }

    void aViewerWithoutAnImagePastesThePicture()
    {
        CKeys f;
        f.AddSelected(20, 20, 40, 30);
        f.Key(Qt::Key_C, Qt::ControlModifier);
        f.images.SetImages({});
        f.Key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.images.GetImageCount(), 1);
        QCOMPARE(f.geometry.Size(), 1);
    }

    void damagedAnnotationsOnTheClipboardAreToldAndChangeNothing()
    {
        CKeys f;
        auto* pData = new QMimeData;
        pData->setData(kType, "{\"format\": 1");
        QGuiApplication::clipboard()->setMimeData(pData);
        QSignalSpy spy(f.ctrl.get(), &CImageView2DCtrl::signal_Failed);
        f.Key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(spy.size(), 1);
        QVERIFY(spy[0][0].toString().startsWith(QStringLiteral("Cannot paste the annotations. ")));
        QVERIFY(spy[0][0].toString().size() > 40);
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(f.images.GetImageCount(), 1);
    }

    void shiftDrawsSquaresCirclesAndLinesAtStepsOf45Degrees()
    {
        CKeys f;
        f.Choose("Rect");
        f.ShiftDrag({100, 100}, {60, 80});
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(100, 100, -40, -40));
        f.Choose("Ellipse");
        f.ShiftDrag({10, 10}, {30, 50});
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(10, 10, 40, 40));
        f.Choose("Circle");
        f.ShiftDrag({60, 60}, {63, 64});
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(55, 55, 10, 10));
        const auto line = [&](const QPointF& end) {
            f.ctrl->slot_DrawRuler();
            f.ShiftDrag({50, 50}, end);
            const auto pLine = f.ShapeOf<CLine>(f.geometry.GetAt(0));
            return QPointF(pLine->end().x(), pLine->end().y());
        };
        QCOMPARE(line({90, 55}), QPointF(90, 50));
        QCOMPARE(line({48, 20}), QPointF(50, 20));
        QCOMPARE(line({90, 80}), QPointF(85, 85));
        QCOMPARE(line({20, 78}), QPointF(21, 79));
        QCOMPARE(line({20, 52}), QPointF(20, 50));
    }

    void shiftBendsAnEdgeOfAPolygonToo()
    {
        CKeys f;
        f.Choose("Polygon");
        f.Click({10, 10});
        f.Click({60, 14}, Qt::ShiftModifier);
        f.Click({62, 60}, Qt::ShiftModifier);
        f.Key(Qt::Key_Enter);
        QCOMPARE(f.Polygon(), QList<QPointF>({{10, 10}, {60, 10}, {60, 60}}));
    }

    void enterClosesAPolygonFromThreeCornersOn()
    {
        CKeys f;
        f.Choose("Polygon");
        f.Click({10, 10});
        f.Key(Qt::Key_Return);
        f.Click({60, 10});
        f.Key(Qt::Key_Return);
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Drawing_Polygon);
        f.Click({60, 60});
        f.Key(Qt::Key_Return);
        QCOMPARE(f.Polygon(), QList<QPointF>({{10, 10}, {60, 10}, {60, 60}}));
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
        QVERIFY(f.geometry.GetObjectDrawing().empty() && !f.geometry.GetObjectDrawingWaiting());
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aDoubleClickSetsTheLastCornerAndCloses()
    {
        CKeys f;
        f.Choose("Polygon");
        f.Click({10, 10});
        f.Click({60, 10});
        QTest::mouseClick(f.Window(), Qt::LeftButton, Qt::NoModifier, f.Pixel({60, 60}));
        QTest::mouseDClick(f.Window(), Qt::LeftButton, Qt::NoModifier, f.Pixel({60, 60}));
        QCOMPARE(f.Polygon(), QList<QPointF>({{10, 10}, {60, 10}, {60, 60}}));
        QCOMPARE(f.geometry.Size(), 1);
        QVERIFY(f.geometry.GetObjectDrawing().empty());
    }

    void backspaceTakesCornersBackOneByOneAndDeletesNothing()
    {
        CKeys f;
        f.AddSelected(100, 100, 20, 20);
        f.Choose("Polygon");
        for (const QPointF& corner : {QPointF(10, 10), QPointF(60, 10), QPointF(90, 90)})
            f.Click(corner);
        f.Move({61, 61});
        f.Key(Qt::Key_Backspace);
        QCOMPARE(f.geometry.Size(), 1);
        const auto pWaiting = f.ShapeOf<CLine>(f.geometry.GetObjectDrawingWaiting());
        QVERIFY(pWaiting && pWaiting->start() == CPoint<double>(60, 10));
        f.Click({60, 60});
        f.Key(Qt::Key_Return);
        QCOMPARE(f.Polygon(), QList<QPointF>({{10, 10}, {60, 10}, {60, 60}}));
        f.Choose("Polygon");
        f.Click({10, 10});
        f.Click({60, 10});
        f.Key(Qt::Key_Backspace);
        f.Key(Qt::Key_Backspace);
        QVERIFY(f.geometry.GetObjectDrawing().empty() && !f.geometry.GetObjectDrawingWaiting());
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Drawing_Polygon);
        f.Key(Qt::Key_Escape);
        f.Key(Qt::Key_Backspace); // nothing is drawn any more: what is selected goes
        QCOMPARE(f.geometry.Size(), 1);
    }

    void escapeGivesThePolygonUpAndLeaves()
    {
        CKeys f;
        f.Choose("Polygon");
        f.Click({10, 10});
        f.Click({60, 10});
        f.Move({61, 61});
        f.Key(Qt::Key_Escape);
        QVERIFY(f.geometry.GetObjectDrawing().empty() && !f.geometry.GetObjectDrawingWaiting());
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
        QCOMPARE(f.geometry.Size(), 0);
    }
};

VANTOR_TEST_MAIN(tst_EditKeys)
#include "tst_EditKeys.moc"
