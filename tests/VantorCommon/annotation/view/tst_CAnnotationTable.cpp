// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CAnnotationTableModel, CAnnotationTableView and CAnnotationTableCtrl: the table beside the view.
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/CAnnotationTableCtrl.h>
#include <VantorCommon/annotation/view/CAnnotationTableView.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>

using namespace Vantor::Geometry;
using M = CAnnotationTableModel;
using ObjectPtr = EditFixture::ObjectPtr;
using Objects = std::vector<ObjectPtr>;

namespace
{
/// The view and its table in a window, shown.
class CTable : public EditFixture
{
public:
    CTable()
    {
        table = new CAnnotationTableView(&host);
        table->setGeometry(410, 0, 250, 300);
        toolDock->hide();
        tableCtrl = std::make_unique<CAnnotationTableCtrl>(table);
        tableCtrl->SetTarget(ctrl.get(), view);
        table->show();
    }
    M& Model() const { return *table->GetModel(); }
    CAnnotationStore& Store() const { return *ctrl->GetAnnotationStore(); }
    QString Text(int nRow, int nColumn) const
    {
        return Model().data(Model().index(nRow, nColumn), Qt::DisplayRole).toString();
    }
    bool Checked(int nRow, int nColumn) const
    {
        return Model().data(Model().index(nRow, nColumn), Qt::CheckStateRole).toInt() == Qt::Checked;
    }
    /// Once the present event is over, row by row.
    bool Shows(const Objects& vctObjects) const
    {
        return QTest::qWaitFor([&] {
            Objects vctRows;
            for (int i = 0; i < Model().rowCount(); ++i)
                vctRows.push_back(Model().GetObject(i));
            return vctRows == vctObjects;
        });
    }
    QPoint At(int nRow, int nColumn) const
    {
        const QRect rect = table->visualRect(Model().index(nRow, nColumn));
        return table->viewport()->mapTo(&host, rect.center());
    }
    void ClickRow(int nRow, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(Window(), Qt::LeftButton, modifiers, At(nRow, M::EColumn_Kind));
    }
    /// The rows that are selected once the present event is over.
    QList<int> SelectedRows() const
    {
        QCoreApplication::processEvents();
        QList<int> lstRows;
        for (const QModelIndex& index : table->selectionModel()->selectedRows())
            lstRows << index.row();
        std::sort(lstRows.begin(), lstRows.end());
        return lstRows;
    }
    void Undo()
    {
        view->setFocus();
        PressUndo();
    }

    CAnnotationTableView* table = nullptr;
    std::unique_ptr<CAnnotationTableCtrl> tableCtrl;
};
} // namespace

class tst_CAnnotationTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRowHasNameKindPositionSizeLockAndVisibility()
    {
        CTable f;
        const ObjectPtr pBox = f.AddRectangle(30, 40, -10.456, 20);
        f.Store().Rename(pBox, QStringLiteral("door"));
        pBox->SetLocked(true);
        QVERIFY(f.Shows({pBox}));
        QCOMPARE(f.Text(0, M::EColumn_Name), QStringLiteral("door"));
        QCOMPARE(f.Text(0, M::EColumn_Kind), QStringLiteral("Rectangle"));
        QCOMPARE(f.Text(0, M::EColumn_Position), QStringLiteral("19.54, 40"));
        QCOMPARE(f.Text(0, M::EColumn_Size), QStringLiteral("10.46 \u00d7 20"));
        QVERIFY(f.Checked(0, M::EColumn_Locked));
        QVERIFY(f.Checked(0, M::EColumn_Visible));
        QCOMPARE(f.Model().headerData(M::EColumn_Size, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QStringLiteral("Size"));
    }

    void thePageIsShownFirstWhereThereAreSeveralWithSetsOfTheirOwn()
    {
        CTable f;
        const auto pages = [&] {
            QCoreApplication::processEvents();
            return f.table->isColumnHidden(M::EColumn_Page) ? QString() : f.Text(0, M::EColumn_Page);
        };
        f.AddRectangle(1, 2, 3, 4);
        QCOMPARE(pages(), QString());
        f.ctrl->PushImage(MakeTestImage(60, 40, 3));
        QCOMPARE(pages(), QString()); // one set for both
        SCenterOptions sOptions;
        sOptions.bAnnotationsPerImage = true;
        f.ctrl->SetOptions(sOptions);
        f.ctrl->PushImage(MakeTestImage(60, 40, 3));
        f.AddRectangle(1, 2, 3, 4);
        QCOMPARE(pages(), QStringLiteral("3"));
        QCOMPARE(f.table->header()->logicalIndex(0), int(M::EColumn_Page));
        f.ctrl->slot_Previous();
        QCOMPARE(pages(), QStringLiteral("2"));
        f.ctrl->CloseCurrentImage();
        QCOMPARE(pages(), QStringLiteral("2"));
        f.ctrl->CloseCurrentImage();
        QCOMPARE(pages(), QString());
        f.tableCtrl->SetTarget(nullptr, nullptr);
        QCOMPARE(pages(), QString());
    }

    void aHostGivesOtherTexts()
    {
        CTable f;
        const ObjectPtr pBox = f.AddRectangle(1, 2, 3, 4);
        f.Model().SetTexts({QStringLiteral("Nom")}, [](const auto&) { return QStringLiteral("Boite"); });
        QVERIFY(f.Shows({pBox}));
        QCOMPARE(f.Text(0, M::EColumn_Kind), QStringLiteral("Boite"));
        const auto header = [&](int n) { return f.Model().headerData(n, Qt::Horizontal, Qt::DisplayRole); };
        QCOMPARE(header(M::EColumn_Name).toString(), QStringLiteral("Nom"));
        QCOMPARE(header(M::EColumn_Kind).toString(), QStringLiteral("Kind"));
    }

    void theRowsFollowWhateverHappensToTheAnnotations()
    {
        CTable f;
        const QAbstractItemModelTester tester(&f.Model(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        const ObjectPtr a = f.AddRectangle(1, 1, 5, 5);
        const ObjectPtr b = f.AddRectangle(2, 2, 5, 5);
        const ObjectPtr c = f.AddRectangle(3, 3, 5, 5);
        QVERIFY(f.Shows({c, b, a}));
        f.geometry.SetOrder({a, b, c});
        QVERIFY(f.Shows({a, b, c}));
        f.geometry.DeleteObject(b);
        QVERIFY(f.Shows({a, c}));
        b->MoveTopLeftTo({70, 80});
        f.geometry.AddObject(b);
        QVERIFY(f.Shows({b, a, c}));
        b->MoveTopLeftTo({90, 80});
        QCOMPARE(f.Text(0, M::EColumn_Position), QStringLiteral("90, 80"));
        f.geometry.ClearObject();
        QVERIFY(f.Shows({}));
        f.geometry.SetObjects({a, b});
        QVERIFY(f.Shows({a, b}));
    }

    void anotherControllersAnnotationsTakeTheRows()
    {
        CTable f;
        const ObjectPtr a = f.AddRectangle(1, 1, 5, 5);
        QVERIFY(f.Shows({a}));
        CImageView2DGeometryModel other;
        CImageView2DCtrl ctrl(nullptr, &other, nullptr, nullptr, nullptr, nullptr, nullptr);
        f.tableCtrl->SetTarget(&ctrl, nullptr);
        QVERIFY(f.Shows({}));
        f.AddRectangle(2, 2, 5, 5); // nobody listens
        const auto b = ShapeKinds::Wrap(std::make_shared<CRectangle>(1, 2, 3, 4));
        other.AddObject(b);
        QVERIFY(f.Shows({b}));
    }

    void aClickSelectsAloneCtrlAddsAndTheViewsSelectionComesBack()
    {
        CTable f;
        const ObjectPtr a = f.AddRectangle(10, 10, 20, 20);
        const ObjectPtr b = f.AddRectangle(60, 10, 20, 20);
        const ObjectPtr c = f.AddRectangle(110, 10, 20, 20);
        QVERIFY(f.Shows({c, b, a}));
        f.ClickRow(2);
        QCOMPARE(f.Selected(), Objects({a}));
        f.ClickRow(0, Qt::ControlModifier);
        QCOMPARE(f.Selected(), Objects({c, a}));
        QCOMPARE(f.SelectedRows(), QList<int>({0, 2}));
        f.Move({69, 19});
        f.Click({70, 20});
        QCOMPARE(f.Selected(), Objects({b}));
        QCOMPARE(f.SelectedRows(), QList<int>({1}));
    }

    void aClickBringsTheAnnotationIntoSight()
    {
        CTable f;
        f.AddRectangle(10, 10, 20, 20);
        const ObjectPtr b = f.AddRectangle(170, 120, 20, 20);
        QTRY_COMPARE(f.Model().rowCount(), 2);
        const auto shown = [&] {
            return QRectF(f.view->rect()).contains(f.view->MapToWidget(b->GetBoundary()));
        };
        QWheelEvent wheel(QPointF(1, 1), f.view->mapToGlobal(QPoint(1, 1)), QPoint(), QPoint(0, 2000),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(f.view, &wheel);
        QVERIFY(!shown());
        const double dblScale = f.view->GetSizePixel();
        f.ClickRow(0);
        QVERIFY(shown());
        QCOMPARE(f.view->GetSizePixel(), dblScale);
        const QRect before = f.view->GetViewPort();
        f.ClickRow(0);
        QCOMPARE(f.view->GetViewPort(), before); // nothing moves what is seen
        f.ClickRow(1);
        QVERIFY(!shown());
        QTest::keyClick(f.table, Qt::Key_Up);
        QVERIFY(shown());
    }

    void f2InAnyColumnRenamesAsOneStep()
    {
        CTable f;
        const ObjectPtr a = f.AddRectangle(10, 10, 20, 20);
        QVERIFY(f.Shows({a}));
        f.ClickRow(0);
        QTest::keyClick(f.Window(), Qt::Key_F2);
        auto* pEditor = f.table->findChild<QLineEdit*>();
        QVERIFY(pEditor);
        QTest::keyClicks(pEditor, QStringLiteral("door"));
        QTest::keyClick(pEditor, Qt::Key_Return);
        QTRY_COMPARE(a->GetName(), QStringLiteral("door"));
        QTRY_COMPARE(f.Text(0, M::EColumn_Name), QStringLiteral("door"));
        f.Undo();
        QVERIFY(!a->IsNamed());
    }

    void anEditorThatIsLeftAsItWasGivesNoName()
    {
        CTable f;
        const ObjectPtr a = f.AddRectangle(10, 10, 20, 20);
        QVERIFY(f.Shows({a}));
        f.ClickRow(0);
        QTest::keyClick(f.Window(), Qt::Key_F2);
        QTest::keyClick(f.table->findChild<QLineEdit*>(), Qt::Key_Return);
        QVERIFY(!a->IsNamed());
        QVERIFY(!f.ctrl->CanUndo());
    }

    void deleteDeletesWhatIsSelectedButNothingLocked()
    {
        CTable f;
        const ObjectPtr a = f.AddRectangle(10, 10, 20, 20);
        const ObjectPtr b = f.AddRectangle(60, 10, 20, 20);
        const ObjectPtr c = f.AddRectangle(110, 10, 20, 20);
        b->SetLocked(true);
        QVERIFY(f.Shows({c, b, a}));
        f.ClickRow(0);
        f.ClickRow(2, Qt::ShiftModifier);
        QTest::keyClick(f.Window(), Qt::Key_Delete);
        QVERIFY(f.Shows({b}));
        f.Undo();
        QTRY_COMPARE(f.Model().rowCount(), 3);
    }

    void aCheckBoxOfASelectedRowIsForAllSelectedOnes()
    {
        CTable f;
        const ObjectPtr a = f.AddRectangle(10, 10, 20, 20);
        const ObjectPtr b = f.AddRectangle(60, 10, 20, 20);
        const ObjectPtr c = f.AddRectangle(110, 10, 20, 20);
        QVERIFY(f.Shows({c, b, a}));
        a->SetSelected(true);
        c->SetSelected(true);
        QVERIFY(f.Model().setData(f.Model().index(0, M::EColumn_Locked), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(a->IsLocked() && c->IsLocked() && !b->IsLocked());
        QVERIFY(f.Model().setData(f.Model().index(1, M::EColumn_Visible), Qt::Unchecked, Qt::CheckStateRole));
        QVERIFY(a->IsVisible() && c->IsVisible() && !b->IsVisible());
        f.Undo();
        f.Undo();
        QVERIFY(!a->IsLocked() && !c->IsLocked() && b->IsVisible());
        QVERIFY(!f.Model().setData(f.Model().index(1, M::EColumn_Kind), QStringLiteral("x"), Qt::EditRole));
    }

    void rowsAreDraggedToAnotherPlace_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<int>("target");
        QTest::addColumn<QString>("after");
        QTest::newRow("down") << QList<int>{0} << 2 << QStringLiteral("bacd");
        QTest::newRow("to the end") << QList<int>{0, 2} << -1 << QStringLiteral("bdac");
        QTest::newRow("up") << QList<int>{3} << 0 << QStringLiteral("dabc");
        QTest::newRow("where it is") << QList<int>{1, 2} << 2 << QStringLiteral("abcd");
    }
    void rowsAreDraggedToAnotherPlace()
    {
        QFETCH(QList<int>, rows);
        QFETCH(int, target);
        QFETCH(QString, after);
        CTable f;
        for (const char* szName : {"d", "c", "b", "a"})
            f.AddRectangle(10, 10, 20, 20)->SetName(QLatin1String(szName));
        QTRY_COMPARE(f.Model().rowCount(), 4);
        const auto order = [&] {
            QString strOrder;
            for (const ObjectPtr& pObject : f.geometry.GetObjects())
                strOrder += pObject->GetName();
            return strOrder;
        };
        QModelIndexList lstIndexes;
        for (int nRow : rows)
            lstIndexes << f.Model().index(nRow, 0) << f.Model().index(nRow, 1);
        const std::unique_ptr<QMimeData> pData(f.Model().mimeData(lstIndexes));
        QVERIFY(f.Model().dropMimeData(pData.get(), Qt::MoveAction, target, 0, {}));
        QCOMPARE(order(), after);
        QTRY_COMPARE(f.Text(0, M::EColumn_Name), after.left(1));
        if (f.ctrl->CanUndo())
            f.Undo();
        QCOMPARE(order(), QStringLiteral("abcd"));
        QMimeData foreign;
        foreign.setText(QStringLiteral("a"));
        QVERIFY(!f.Model().dropMimeData(&foreign, Qt::MoveAction, 0, 0, {}));
    }

    void itFollowsTenThousandShapes()
    {
        CTable f;
        constexpr int kShapes = 10000;
        Objects vctObjects;
        for (int i = 0; i < kShapes; ++i)
            vctObjects.push_back(ShapeKinds::Wrap(std::make_shared<CRectangle>(i % 190, i % 140, 5, 5)));
        f.geometry.SetObjects(vctObjects);
        QTRY_COMPARE(f.Model().rowCount(), kShapes);
        QVERIFY(f.table->grab().width() > 0);
        constexpr int kRounds = 20;
        qint64 nNanoseconds = 0;
        for (int i = 0; i < kRounds; ++i) {
            f.view->hide(); // what it paints is not what is measured
            QCoreApplication::processEvents();
            f.geometry.AddObject(ShapeKinds::Wrap(std::make_shared<CRectangle>(i, i, 5, 5)));
            QElapsedTimer timer;
            timer.start();
            QCoreApplication::processEvents(); // the rows, the selection and the painting of the table
            nNanoseconds += timer.nsecsElapsed();
            QCOMPARE(f.Model().rowCount(), kShapes + i + 1);
        }
        qInfo("one shape more among %d: %.2f ms", kShapes, nNanoseconds / 1e6 / kRounds);
        QCOMPARE(f.table->findChildren<QLineEdit*>().size(), 0);
        QVERIFY(f.table->viewport()->findChildren<QWidget*>().isEmpty()); // no widget for a row
    }

    void itLivesOnWithoutItsPartners()
    {
        CTable f;
        auto pGeometry = std::make_unique<CImageView2DGeometryModel>();
        auto pCtrl = std::make_unique<CImageView2DCtrl>(nullptr, pGeometry.get(), nullptr, nullptr, nullptr,
                                                        nullptr, nullptr);
        pGeometry->AddObject(ShapeKinds::Wrap(std::make_shared<CRectangle>(1, 2, 3, 4)));
        f.tableCtrl->SetTarget(pCtrl.get(), nullptr);
        QTRY_COMPARE(f.Model().rowCount(), 1);
        pCtrl.reset();
        Q_EMIT f.table->signal_Delete();
        Q_EMIT f.table->signal_Show(f.Model().GetObject(0));
        QVERIFY(f.Model().setData(f.Model().index(0, 0), QStringLiteral("x"), Qt::EditRole));
        pGeometry.reset();
        QTRY_COMPARE(f.Model().rowCount(), 0);
        const CAnnotationTableCtrl without(nullptr);
    }
};

VANTOR_TEST_MAIN(tst_CAnnotationTable)
#include "tst_CAnnotationTable.moc"
