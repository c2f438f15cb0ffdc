// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CMeasurementModel, CMeasurementView and CMeasurementCtrl: the table of results beside the view.
#include <Vantor/measure/RegionStatistics.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/measure/CMeasurementCtrl.h>
#include <VantorCommon/measure/CMeasurementView.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <tests/support/EditFixture.h>
#include <tests/support/PauseProbe.h>
#include <tests/support/TestMain.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeView>
#include <cmath>

using namespace Vantor::Algorithms;
using namespace Vantor::Geometry;
using ObjectPtr = EditFixture::ObjectPtr;

namespace
{
int Column(const char* pKey)
{
    return FindMeasurementColumn(pKey);
}

/// The view and its table in a window, shown.
class CTable : public EditFixture
{
public:
    explicit CTable(int nWidth = 200, int nHeight = 150) : EditFixture(nWidth, nHeight)
    {
        table = new CMeasurementView(&host);
        table->setGeometry(410, 0, 250, 300);
        toolDock->hide();
        tableCtrl = std::make_unique<CMeasurementCtrl>(table);
        tableCtrl->SetTarget(ctrl.get(), view);
        table->show();
    }
    CMeasurementModel& Model() const { return *table->GetModel(); }
    QTreeView* Tree() const { return table->findChild<QTreeView*>(); }
    double Value(int nRow, const char* pKey) const
    {
        const SMeasurementRow* pRow = Model().GetRow(nRow);
        return pRow ? pRow->pMeasured->values[static_cast<std::size_t>(Column(pKey))] : kUndefined;
    }
    /// Waits until a row has a value.
    bool Has(int nRow, const char* pKey, double dblValue) const
    {
        return QTest::qWaitFor([&] { return Value(nRow, pKey) == dblValue; });
    }
    bool HasRows(int nRows) const
    {
        return QTest::qWaitFor([&] { return Model().rowCount() == nRows; });
    }
    QStringList Names() const
    {
        QStringList lstNames;
        for (int i = 0; i < Model().rowCount(); ++i)
            lstNames << QString::fromStdString(Model().GetRow(i)->pMeasured->name);
        return lstNames;
    }
    ObjectPtr AddNamed(const char* pName, double x, double y, double width, double height)
    {
        const ObjectPtr pBox = AddRectangle(x, y, width, height);
        pBox->SetName(QString::fromLatin1(pName));
        return pBox;
    }
    void UsePages(int nPages)
    {
        SCenterOptions sOptions;
        sOptions.bAnnotationsPerImage = true;
        ctrl->SetOptions(sOptions);
        std::vector<std::shared_ptr<CImage>> vctPages;
        for (int i = 0; i < nPages; ++i) {
            vctPages.push_back(MakeTestImage(60, 40, 1, i));
            vctPages.back()->SetName(L"a.pdf");
        }
        images.SetImages(vctPages);
    }
    QString Summary() const { return table->findChild<QLabel*>()->text(); }

    CMeasurementView* table = nullptr;
    std::unique_ptr<CMeasurementCtrl> tableCtrl;
};
} // namespace

class tst_CMeasurementTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { CSettingManager::Set(QStringLiteral("MEASURE_COLUMNS"), QString()); }

    void aRowHasTheMeasurementsOfItsShape()
    {
        CTable f;
        const ObjectPtr pBox = f.AddNamed("door", 30, 40, 10, 20);
        QVERIFY(f.HasRows(1));
        QCOMPARE(f.Names(), QStringList{QStringLiteral("door")});
        QCOMPARE(f.Model().GetRow(0)->pObject, pBox);
        QCOMPARE(f.Model().GetRow(0)->pMeasured->kind, std::string("Rectangle"));
        QCOMPARE(f.Value(0, "area"), 200.0);
        const CRectangle box(30, 40, 10, 20);
        const auto pixels = MeasureRegion(*f.images.GetCurrentImage(), &box, EStatistics::Full);
        QCOMPARE(f.Value(0, "mean"), pixels.grey->mean);
        QCOMPARE(f.Value(0, "median"), pixels.grey->median);
        QVERIFY(std::isnan(f.Value(0, "page")));
        QCOMPARE(f.Model().data(f.Model().index(0, 2), Qt::DisplayRole).toString(), QStringLiteral("200"));
        QCOMPARE(f.Model().headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QStringLiteral("Area [pixel\u00b2]"));
    }

    void theModelIsAProperModel()
    {
        CTable f;
        const QAbstractItemModelTester tester(&f.Model(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        const ObjectPtr pBox = f.AddRectangle(1, 2, 3, 4);
        f.AddRectangle(5, 2, 3, 4);
        QVERIFY(f.HasRows(2));
        f.Model().sort(2, Qt::DescendingOrder);
        f.geometry.DeleteObject(pBox);
        QVERIFY(f.HasRows(1));
        f.Model().SetColumns({Column("name"), Column("mean"), Column("name"), -1, 1000});
        QCOMPARE(f.Model().columnCount(), 2);
        f.Model().SetPages(true);
        QCOMPARE(f.Model().columnCount(), 3);
        QVERIFY(!f.Model().data(f.Model().index(7, 7), Qt::DisplayRole).isValid());
    }

    void theRowFollowsTheShapeWhileItIsMovedAndResized()
    {
        CTable f;
        f.AddRectangle(30, 40, 10, 20);
        QVERIFY(f.HasRows(1));
        f.Click({35, 50});
        f.Press({35, 50});
        f.Move({40, 50});
        f.Move({55, 60});
        QVERIFY(f.Has(0, "x", 50.0));
        QCOMPARE(f.Value(0, "y"), 50.0);
        f.Release({55, 60});
        f.Press({50, 50});
        f.Move({48, 48});
        f.Move({40, 45});
        QVERIFY(f.Has(0, "area", 20.0 * 25.0));
        f.Release({40, 45});
        f.PressUndo();
        QVERIFY(f.Has(0, "area", 200.0));
    }

    void aShapeIsMeasuredWhileItIsDrawn()
    {
        CTable f;
        f.ctrl->slot_SelectROIRectangle();
        f.Move({11, 11});
        f.Press({10, 10});
        f.Move({15, 15});
        f.Move({30, 40});
        QVERIFY(f.HasRows(1));
        QVERIFY(f.Has(0, "area", 20.0 * 30.0));
        QCOMPARE(f.geometry.Size(), 0);
        f.Release({30, 40});
        QTRY_COMPARE(f.geometry.Size(), 1);
        QVERIFY(QTest::qWaitFor([&] {
            const SMeasurementRow* pRow = f.Model().GetRow(0);
            return pRow && pRow->pObject == f.geometry.GetAt(0);
        }));
        QCOMPARE(f.Model().rowCount(), 1);
    }

    void theBandThatSelectsIsNoShape()
    {
        CTable f;
        f.AddRectangle(100, 100, 10, 20);
        QVERIFY(f.HasRows(1));
        f.Press({10, 10});
        f.Move({15, 15});
        f.Move({30, 40});
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(1));
        f.AddRectangle(100, 100, 10, 20);
        QVERIFY(f.HasRows(2));
        f.Release({30, 40});
    }

    void anotherImageIsMeasuredAnew()
    {
        CTable f;
        f.AddRectangle(30, 40, 10, 20);
        QVERIFY(f.HasRows(1));
        const double dblMean = f.Value(0, "mean");
        const auto pImage = MakeTestImage(200, 150, 3, 77);
        f.images.SetCurrentImage(pImage);
        const CRectangle box(30, 40, 10, 20);
        const double dblNow = MeasureRegion(*pImage, &box, EStatistics::Full).grey->mean;
        QVERIFY(dblNow != dblMean);
        QVERIFY(f.Has(0, "mean", dblNow));
    }

    void aNewNameIsShown()
    {
        CTable f;
        const ObjectPtr pBox = f.AddNamed("a", 30, 40, 10, 20);
        QVERIFY(f.HasRows(1));
        pBox->SetName(QStringLiteral("b"));
        QTRY_COMPARE(f.Names(), QStringList{QStringLiteral("b")});
    }

    void shapesThatGoLeaveTheTable()
    {
        CTable f;
        f.AddRectangle(30, 40, 10, 20);
        f.AddRectangle(30, 40, 10, 20);
        QVERIFY(f.HasRows(2));
        f.geometry.ClearObject();
        QVERIFY(f.HasRows(0));
        f.AddRectangle(30, 40, 10, 20);
        QVERIFY(f.HasRows(1));
        f.tableCtrl->SetTarget(nullptr, nullptr);
        QVERIFY(f.HasRows(0));
    }

    void aHiddenTableMeasuresWhenItComesToSight()
    {
        CTable f;
        QVERIFY(f.HasRows(0));
        f.table->hide();
        f.AddRectangle(30, 40, 10, 20);
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(f.Model().rowCount(), 0);
        f.table->show();
        QVERIFY(f.HasRows(1));
    }

    void aColumnSortsAsNumbersAndWhatHasNoneStandsLast()
    {
        CTable f;
        f.AddNamed("ten", 0, 0, 10, 1);
        f.AddNamed("nine", 0, 0, 9, 1);
        const ObjectPtr pLine = f.Add(std::make_shared<CLine>(CPoint<double>(0, 0), CPoint<double>(3, 4)));
        pLine->SetName(QStringLiteral("line"));
        f.AddNamed("hundred", 0, 0, 100, 1);
        QVERIFY(f.HasRows(4));
        f.Tree()->sortByColumn(2, Qt::AscendingOrder);
        QCOMPARE(f.Names(), QStringList({QStringLiteral("nine"), QStringLiteral("ten"),
                                         QStringLiteral("hundred"), QStringLiteral("line")}));
        f.Tree()->sortByColumn(2, Qt::DescendingOrder);
        QCOMPARE(f.Names(), QStringList({QStringLiteral("hundred"), QStringLiteral("ten"),
                                         QStringLiteral("nine"), QStringLiteral("line")}));
        f.Tree()->sortByColumn(0, Qt::AscendingOrder);
        QCOMPARE(f.Names().first(), QStringLiteral("hundred"));
        f.AddNamed("a", 0, 0, 5, 1);
        QVERIFY(f.HasRows(5));
        QCOMPARE(f.Names().first(), QStringLiteral("a"));
    }

    void theSummaryIsOfTheSortedColumnAndOfTheSelectedRows()
    {
        CTable f;
        const ObjectPtr pFirst = f.AddRectangle(0, 0, 10, 1);
        const ObjectPtr pSecond = f.AddRectangle(0, 0, 20, 1);
        f.AddRectangle(0, 0, 60, 1);
        QVERIFY(f.HasRows(3));
        QCOMPARE(f.Summary(), QStringLiteral("Shapes: 3"));
        f.Tree()->sortByColumn(2, Qt::AscendingOrder);
        QCOMPARE(f.Summary(),
                 QStringLiteral("Shapes: 3   Area [pixel\u00b2]: N 3, mean 30, deviation 26.458, "
                                "minimum 10, maximum 60"));
        pFirst->SetSelected(true);
        pSecond->SetSelected(true);
        QTRY_COMPARE(f.Summary(),
                     QStringLiteral("Shapes: 2   Area [pixel\u00b2]: N 2, mean 15, deviation 7.071, "
                                    "minimum 10, maximum 20"));
    }

    void theSelectionIsThatOfTheAnnotations()
    {
        CTable f;
        const ObjectPtr pLower = f.AddRectangle(0, 0, 10, 1);
        const ObjectPtr pUpper = f.AddRectangle(0, 0, 20, 1);
        QVERIFY(f.HasRows(2));
        pLower->SetSelected(true);
        QTRY_COMPARE(f.table->GetSelectedRows(), std::vector<int>{1});
        f.Tree()->sortByColumn(2, Qt::AscendingOrder);
        QCOMPARE(f.table->GetSelectedRows(), std::vector<int>{0});
        QVERIFY(!pUpper->GetSelected());
        const QRect rect = f.Tree()->visualRect(f.Model().index(1, 0));
        QTest::mouseClick(f.Window(), Qt::LeftButton, Qt::NoModifier,
                          f.Tree()->viewport()->mapTo(&f.host, rect.center()));
        QVERIFY(pUpper->GetSelected());
        QVERIFY(!pLower->GetSelected());
        f.geometry.DeleteObject(pUpper);
        QVERIFY(f.HasRows(1));
        QVERIFY(!pLower->GetSelected());
    }

    void theChosenColumnsAreKeptInTheSettings()
    {
        CTable f;
        f.AddRectangle(0, 0, 10, 1);
        QVERIFY(f.HasRows(1));
        auto* pMenu = f.table->findChild<QMenu*>();
        Q_EMIT pMenu->aboutToShow();
        const auto actions = pMenu->actions();
        QCOMPARE(actions.size(), static_cast<int>(GetMeasurementColumns().size()));
        QVERIFY(actions[Column("area")]->isChecked());
        QVERIFY(!actions[Column("kind")]->isChecked());
        actions[Column("kind")]->setChecked(true);
        actions[Column("area")]->setChecked(false);
        QCOMPARE(f.Model().HeaderOf(1), QStringLiteral("Kind"));
        const CTable again;
        QCOMPARE(again.Model().GetColumns(), f.Model().GetColumns());
        CSettingManager::Set(QStringLiteral("MEASURE_COLUMNS"), QStringLiteral("nonsense,max,name"));
        const CTable other;
        QCOMPARE(other.Model().GetColumns(), std::vector<int>({Column("max"), Column("name")}));
    }

    void theRowsOfAllPagesAreShownWhenTheyAreWanted()
    {
        CTable f;
        f.UsePages(3);
        f.AddNamed("first", 1, 1, 5, 5);
        f.ctrl->slot_SelectImage(2);
        const ObjectPtr pThird = f.AddNamed("third", 1, 1, 5, 5);
        QTRY_COMPARE(f.Names(), QStringList{QStringLiteral("third")});
        QCOMPARE(f.Value(0, "page"), 3.0);
        f.table->findChild<QCheckBox*>()->setChecked(true);
        QTRY_COMPARE(f.Names(), QStringList({QStringLiteral("first"), QStringLiteral("third")}));
        QCOMPARE(f.Model().HeaderOf(0), QStringLiteral("Page"));
        QCOMPARE(f.Value(0, "page"), 1.0);
        const CRectangle box(1, 1, 5, 5);
        QCOMPARE(f.Value(0, "mean"),
                 MeasureRegion(*f.images.GetImage(0), &box, EStatistics::Full).channels[0].mean);
        QCOMPARE(f.Value(1, "mean"),
                 MeasureRegion(*f.images.GetImage(2), &box, EStatistics::Full).channels[0].mean);
        Q_EMIT f.Tree()->clicked(f.Model().index(0, 0));
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        f.images.SetImage(MakeTestImage(60, 40, 1, 50), 2);
        QVERIFY(
            f.Has(1, "mean", MeasureRegion(*f.images.GetImage(2), &box, EStatistics::Full).channels[0].mean));
        f.table->findChild<QCheckBox*>()->setChecked(false);
        QTRY_COMPARE(f.Names(), QStringList{QStringLiteral("first")});
    }

    void aCalibrationChangesTheNumbers()
    {
        CTable f;
        f.AddRectangle(30, 40, 10, 20);
        QVERIFY(f.HasRows(1));
        f.tableCtrl->SetCalibration([&f](const CImageView2DCtrl& ctrl, int nImage) {
            CCalibration calibration;
            const bool bMine = &ctrl == f.ctrl.get() && nImage == 0;
            return bMine && calibration.Set({"mm", 0.5, 0.5}).empty() ? calibration : CCalibration();
        });
        QVERIFY(f.Has(0, "area", 50.0));
        QCOMPARE(f.Model().HeaderOf(2), QStringLiteral("Area [mm\u00b2]"));
        f.tableCtrl->SetCalibration(nullptr);
        QVERIFY(f.Has(0, "area", 200.0));
    }

    void whatIsCopiedIsTheSelectedRowsOrAll()
    {
        CTable f;
        const ObjectPtr pBox = f.AddNamed("a", 0, 0, 10, 1);
        f.AddNamed("b", 0, 0, 2.5, 1);
        f.Model().SetColumns({Column("name"), Column("area")});
        QVERIFY(f.HasRows(2));
        f.table->slot_Copy();
        QCOMPARE(QApplication::clipboard()->text(),
                 QStringLiteral("Name\tArea [pixel\u00b2]\nb\t2.5\na\t10\n"));
        pBox->SetSelected(true);
        QTRY_COMPARE(f.table->GetSelectedRows(), std::vector<int>{1});
        f.Tree()->setFocus();
        QTest::keyClick(f.Window(), Qt::Key_C, Qt::ControlModifier);
        QTRY_COMPARE(QApplication::clipboard()->text(), QStringLiteral("Name\tArea [pixel\u00b2]\na\t10\n"));
    }

    void theTableIsSavedAsItIsShown()
    {
        CTable f;
        f.AddNamed("a", 0, 0, 10, 1);
        f.AddNamed("b", 0, 0, 2.5, 1);
        f.Model().SetColumns({Column("name"), Column("area")});
        QVERIFY(f.HasRows(2));
        f.Tree()->sortByColumn(1, Qt::DescendingOrder);
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("table.csv"));
        QSignalSpy saved(f.tableCtrl.get(), &CMeasurementCtrl::signal_Saved);
        QSignalSpy failed(f.tableCtrl.get(), &CMeasurementCtrl::signal_Failed);
        f.tableCtrl->slot_SaveTo(strPath);
        QTRY_COMPARE(saved.count(), 1);
        QFile file(strPath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(file.readAll()),
                 QStringLiteral("Name,Area [pixel\u00b2]\r\na,10\r\nb,2.5\r\n"));
        f.tableCtrl->slot_SaveTo(folder.filePath(QStringLiteral("none/table.csv")));
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(failed[0][0].toString().contains(QStringLiteral("none/table.csv")));
        QCOMPARE(saved.count(), 1);
    }

    void aHostGivesOtherTexts()
    {
        CTable f;
        f.AddRectangle(0, 0, 10, 1);
        QVERIFY(f.HasRows(1));
        f.table->SetTexts([](const QString& strText) {
            return strText == QLatin1String("Area") ? QStringLiteral("Flaeche") : strText.toUpper();
        });
        QCOMPARE(f.Model().HeaderOf(2), QStringLiteral("Flaeche [pixel\u00b2]"));
        QCOMPARE(f.table->findChild<QCheckBox*>()->text(), QStringLiteral("ALL PAGES"));
        f.table->slot_Copy();
        QVERIFY(QApplication::clipboard()->text().startsWith(QStringLiteral("Name\t")));
    }

    void numbersAreShort()
    {
        const auto text = &CMeasurementModel::NumberText;
        QCOMPARE(text(3.0), QStringLiteral("3"));
        QCOMPARE(text(-24000000.0), QStringLiteral("-24000000"));
        QCOMPARE(text(118.277465), QStringLiteral("118.277"));
        QCOMPARE(text(0.000123456), QStringLiteral("0.0001235"));
        QCOMPARE(text(kUndefined), QString());
        QCOMPARE(text(1e300), QStringLiteral("1e+300"));
        QCOMPARE(text(HUGE_VAL), QStringLiteral("inf"));
    }

    void everythingMayDieFirst()
    {
        CTable f;
        f.AddRectangle(0, 0, 10, 1);
        delete f.table;
        f.AddRectangle(0, 0, 10, 1);
        QCoreApplication::processEvents();
        f.tableCtrl->slot_Save();
        f.tableCtrl->slot_SaveTo(QStringLiteral("/nowhere"));
        f.table = new CMeasurementView(&f.host);
        f.table->show();
        f.tableCtrl = std::make_unique<CMeasurementCtrl>(f.table);
        f.tableCtrl->SetTarget(f.ctrl.get(), f.view);
        QVERIFY(f.HasRows(2));
        f.ctrl.reset();
        QVERIFY(f.HasRows(0));
        const CMeasurementCtrl nothing(nullptr);
    }

    void aTableThatGoesWhileAJobRunsEndsIt()
    {
        CTable f(3000, 2000);
        for (int i = 0; i < 50; ++i)
            f.AddRectangle(0, 0, 2900 - i, 1900);
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
        f.tableCtrl.reset();
        QCOMPARE(f.Model().rowCount(), 0);
    }

    void theWindowDoesNotWaitForTenThousandShapes()
    {
        CTable f(2000, 1500);
        std::vector<ObjectPtr> vctObjects;
        for (int i = 0; i < 10000; ++i) {
            const auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
            pObject->SetData(std::make_shared<CEllipse>(i % 100 * 19, i / 100 * 14, 15, 11));
            vctObjects.push_back(pObject);
        }
        f.view->hide(); // what it paints is not meant
        f.geometry.SetObjects(vctObjects);
        CPauseProbe probe;
        QCoreApplication::processEvents();
        probe.Start();
        QElapsedTimer clock;
        clock.start();
        QVERIFY(f.HasRows(10000));
        qInfo("10,000 shapes: %lld ms, longest work of the GUI thread %.1f ms", clock.elapsed(),
              probe.MostWorkMs());
        probe.Start();
        clock.start();
        vctObjects[5000]->MoveTopLeftTo({7, 8});
        QVERIFY(f.Has(4999 + 1, "x", 7.0));
        qInfo("one of them moved: %lld ms, longest work of the GUI thread %.1f ms", clock.elapsed(),
              probe.MostWorkMs());
        const auto pOther = MakeTestImage(2000, 1500, 3, 9);
        probe.Start();
        clock.start();
        f.images.SetCurrentImage(pOther);
        const double dblBefore = f.Value(0, "mean");
        QVERIFY(QTest::qWaitFor([&] { return f.Value(0, "mean") != dblBefore; }));
        qInfo("another image: %lld ms, longest work of the GUI thread %.1f ms", clock.elapsed(),
              probe.MostWorkMs());
        QVERIFY(probe.MostWorkMs() < 200.0);
    }
};

VANTOR_TEST_MAIN(tst_CMeasurementTable)
#include "tst_CMeasurementTable.moc"
