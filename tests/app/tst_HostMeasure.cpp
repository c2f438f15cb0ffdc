// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The docks that measure: results, histogram and profile in the viewer.
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/measure/CHistogramView.h>
#include <VantorCommon/measure/CMeasurementCtrl.h>
#include <VantorCommon/measure/CMeasurementView.h>
#include <VantorCommon/measure/CPlotView.h>
#include <VantorCommon/measure/CProfileView.h>

#include <QDockWidget>
#include <QTranslator>

namespace
{
class CMeasureHost : public Host
{
public:
    void ShowDock(const char* pText)
    {
        Entry({QStringLiteral("View"), QStringLiteral("Docks"), QString::fromLatin1(pText)})->trigger();
    }
    template <class Panel> Panel* Find() const { return window.findChild<Panel*>(); }
    template <class Panel> bool IsSeen() const { return !Find<Panel>()->visibleRegion().isEmpty(); }
    bool HasRows(int nRows) const
    {
        return QTest::qWaitFor([&] { return Find<CMeasurementView>()->GetModel()->rowCount() == nRows; });
    }
    template <class Panel> bool HasPlot(bool bPlot = true) const
    {
        return QTest::qWaitFor([&] { return (Find<Panel>()->GetPlot()->GetPlot().Count() > 0) == bPlot; });
    }
};
} // namespace

class tst_HostMeasure : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void theDocksAreHiddenAtFirstAndTheirEntriesShowThem()
    {
        CMeasureHost host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(!host.IsSeen<CMeasurementView>());
        QVERIFY(!host.IsSeen<CHistogramView>());
        QVERIFY(!host.IsSeen<CProfileView>());
        host.ShowDock("Results");
        QTRY_VERIFY(host.IsSeen<CMeasurementView>());
        host.ShowDock("Histogram");
        QTRY_VERIFY(host.IsSeen<CHistogramView>());
        host.ShowDock("Profile"); // a tab over the histogram
        QTRY_VERIFY(host.IsSeen<CProfileView>());
        QTRY_VERIFY(!host.IsSeen<CHistogramView>());
        host.ShowDock("Profile");
        QTRY_VERIFY(host.IsSeen<CHistogramView>());
    }

    void theResultsFollowTheActiveViewer()
    {
        CMeasureHost host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.ShowDock("Results");
        host.View(0)->setFocus();
        host.DrawRectangle(0);
        QVERIFY(host.HasRows(1));
        host.View(1)->setFocus();
        QVERIFY(host.HasRows(0));
        host.View(0)->setFocus();
        QVERIFY(host.HasRows(1));
    }

    void theResultsAreInTheUnitsOfTheImage()
    {
        CMeasureHost host;
        QVERIFY(host.Show({kPhoto}));
        host.ShowDock("Results");
        host.DrawRectangle(0);
        QVERIFY(host.HasRows(1));
        const CMeasurementModel& model = *host.Find<CMeasurementView>()->GetModel();
        QTRY_COMPARE(model.HeaderOf(2), QStringLiteral("Area [pixel²]"));
        Vantor::Algorithms::CCalibration calibration;
        QVERIFY(calibration.Set({"mm", 0.5, 0.5, 0.0, 0.0}).empty());
        StoreOf(host, 0)->SetCalibration(calibration);
        QTRY_COMPARE(model.HeaderOf(2), QStringLiteral("Area [mm²]"));
        host.Entry("Edit", "Undo")->trigger();
        QTRY_COMPARE(model.HeaderOf(2), QStringLiteral("Area [pixel²]"));
    }

    void thePlotsFollowWhatIsSelected()
    {
        CMeasureHost host;
        QVERIFY(host.Show({kPhoto}));
        host.ShowDock("Histogram");
        QVERIFY(host.HasPlot<CHistogramView>());
        host.ShowDock("Profile");
        QVERIFY(host.HasPlot<CProfileView>(false));
        host.Entry({QStringLiteral("Tools"), QStringLiteral("Ruler")})->trigger();
        host.Drag(0, {60, 60}, {180, 200});
        QVERIFY(host.HasPlot<CProfileView>());
        host.Viewer(0)->Get2DDrawableObjects().at(0)->SetSelected(false);
        QVERIFY(host.HasPlot<CProfileView>(false));
    }

    void aTableThatCannotBeSavedIsTold()
    {
        CMeasureHost host;
        QVERIFY(host.Show({kPhoto}));
        host.window.findChild<CMeasurementCtrl*>()->slot_SaveTo(QStringLiteral("/nowhere/a.csv"));
        QTRY_VERIFY(host.Message().contains(QStringLiteral("Cannot save table /nowhere/a.csv.")));
    }

    void thePanelsSpeakTheLanguageOfTheUser()
    {
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(":/app/translations/vantor-viewer_ko.qm")));
        QVERIFY(QCoreApplication::installTranslator(&translator));
        {
            CMeasureHost host;
            const CMeasurementModel& model = *host.Find<CMeasurementView>()->GetModel();
            QCOMPARE(model.HeaderOf(2), QStringLiteral("넓이 [pixel²]"));
            const auto isTranslated = [](const QString& strText) {
                return QCoreApplication::translate("MeasureTexts", strText.toUtf8().constData()) != strText;
            };
            QStringList lstSame;
            for (const auto& column : Vantor::Algorithms::GetMeasurementColumns())
                if (!isTranslated(QString::fromStdString(column.title)))
                    lstSame << QString::fromStdString(column.title);
            QCOMPARE(lstSame, QStringList({QStringLiteral("dx"), QStringLiteral("dy"), QStringLiteral("X"),
                                           QStringLiteral("Y")}));
        }
        QCoreApplication::removeTranslator(&translator);
    }
};

VANTOR_TEST_MAIN(tst_HostMeasure)
#include "tst_HostMeasure.moc"
