// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CPlotView, and the panels of histogram and profile with their controllers.
#include <VantorCommon/measure/CHistogramCtrl.h>
#include <VantorCommon/measure/CHistogramView.h>
#include <VantorCommon/measure/CMeasurementModel.h>
#include <VantorCommon/measure/CPlotView.h>
#include <VantorCommon/measure/CProfileCtrl.h>
#include <VantorCommon/measure/CProfileView.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <cmath>

using namespace Vantor::Algorithms;
using namespace Vantor::Geometry;
using ObjectPtr = EditFixture::ObjectPtr;

namespace
{
/// The view and both panels in a window, shown.
class CPanels : public EditFixture
{
public:
    CPanels()
    {
        toolDock->hide();
        histogram = new CHistogramView(&host);
        histogram->setGeometry(410, 0, 250, 200);
        profile = new CProfileView(&host);
        profile->setGeometry(410, 205, 250, 200);
        propertyDock->hide();
        histogramCtrl = std::make_unique<CHistogramCtrl>(histogram);
        profileCtrl = std::make_unique<CProfileCtrl>(profile);
        histogramCtrl->SetTarget(ctrl.get());
        profileCtrl->SetTarget(ctrl.get());
        histogram->show();
        profile->show();
    }
    const SPlot& Bars() const { return histogram->GetPlot()->GetPlot(); }
    const SPlot& Curve() const { return profile->GetPlot()->GetPlot(); }
    /// Waits for the bars of these counts.
    bool HasBars(const std::vector<std::uint32_t>& counts) const
    {
        const std::vector<double> vctCounts(counts.begin(), counts.end());
        return QTest::qWaitFor(
            [&] { return !Bars().vctSeries.empty() && Bars().vctSeries[0].vctValues == vctCounts; });
    }
    std::vector<std::uint32_t> CountsOf(const CGeometry* pShape) const
    {
        return MeasureRegion(*images.GetCurrentImage(), pShape, EStatistics::Full).grey->histogram;
    }
    static bool Says(const CPlotPanel& panel, const QString& strText)
    {
        return QTest::qWaitFor([&] {
            const auto lstLabels = panel.findChildren<QLabel*>();
            return std::any_of(lstLabels.begin(), lstLabels.end(),
                               [&](const QLabel* pLabel) { return pLabel->text().contains(strText); });
        });
    }
    static void Choose(const CPlotPanel& panel, const char* pChannel)
    {
        auto* pBox = panel.findChild<QComboBox*>();
        const int nChoice = pBox->findData(QString::fromLatin1(pChannel));
        QVERIFY(nChoice >= 0);
        pBox->setCurrentIndex(nChoice);
    }
    ObjectPtr AddLine(double x1, double y1, double x2, double y2)
    {
        const ObjectPtr pLine = Add(std::make_shared<CLine>(CPoint<double>(x1, y1), CPoint<double>(x2, y2)));
        pLine->SetName(QStringLiteral("line"));
        return pLine;
    }

    CHistogramView* histogram = nullptr;
    CProfileView* profile = nullptr;
    std::unique_ptr<CHistogramCtrl> histogramCtrl;
    std::unique_ptr<CProfileCtrl> profileCtrl;
};

SPlot Bars(std::vector<double> vctValues)
{
    SPlot sPlot;
    sPlot.bBars = true;
    sPlot.strX = QStringLiteral("Value");
    sPlot.vctSeries.push_back({QStringLiteral("Grey"), Qt::red, std::move(vctValues)});
    return sPlot;
}

bool IsReddish(const QColor& color)
{
    return color.red() > color.green() + 60 && color.red() > color.blue() + 60;
}

QByteArray ContentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

class tst_Plots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void barsAreAsHighAsTheirValues()
    {
        CPlotView plot;
        plot.resize(400, 300);
        plot.SetPlot(Bars({1, 4, 0, 2}));
        const QImage image = plot.grab().toImage();
        const auto at = [&](int nIndex, double dblValue) {
            return image.pixelColor(plot.PointOf(nIndex, dblValue).toPoint());
        };
        QVERIFY(IsReddish(at(0, 0.9)));
        QVERIFY(!IsReddish(at(0, 1.1)));
        QVERIFY(IsReddish(at(1, 3.9)));
        QVERIFY(!IsReddish(at(2, 0.1)));
        QVERIFY(IsReddish(at(3, 1.9)));
        QVERIFY(!IsReddish(at(3, 2.1)));
    }

    void logarithmicHeightsShowWhatIsRare()
    {
        CPlotView plot;
        plot.resize(400, 300);
        SPlot sPlot = Bars({1e6, 1.0});
        plot.SetPlot(sPlot);
        QVERIFY(plot.PointOf(0, 0.0).y() - plot.PointOf(0, 1.0).y() < 0.1);
        sPlot.bLogarithmic = true;
        plot.SetPlot(sPlot);
        const double dblAll = plot.PointOf(0, 0.0).y() - plot.PointOf(0, 1e6).y();
        const double dblOne = plot.PointOf(0, 0.0).y() - plot.PointOf(0, 1.0).y();
        QVERIFY(qAbs(dblOne / dblAll - std::log(2.0) / std::log(1e6 + 1.0)) < 1e-9);
    }

    void aCurveEndsAtTheAxesAndHasGaps()
    {
        CPlotView plot;
        plot.resize(400, 300);
        SPlot sPlot;
        sPlot.dblStart = 5.0;
        sPlot.dblStep = 0.5;
        sPlot.vctSeries.push_back({QString(), Qt::red, {0.0, 10.0, kUndefined, 10.0, 0.0}});
        plot.SetPlot(sPlot);
        const QImage image = plot.grab().toImage();
        const auto isRed = [&](const QPointF& point) { return IsReddish(image.pixelColor(point.toPoint())); };
        QVERIFY(isRed((plot.PointOf(0, 0.0) + plot.PointOf(1, 10.0)) / 2));
        QVERIFY(!isRed((plot.PointOf(1, 10.0) + plot.PointOf(3, 10.0)) / 2));
        QCOMPARE(plot.IndexAt(plot.PointOf(0, 0.0).toPoint()), 0);
        QCOMPARE(plot.IndexAt(plot.PointOf(3, 0.0).toPoint() + QPoint(5, -20)), 3);
        QCOMPARE(plot.IndexAt(plot.PointOf(4, 0.0).toPoint() - QPoint(1, 0)), 4);
        QCOMPARE(plot.IndexAt(QPoint(0, 100)), -1);
        QCOMPARE(plot.IndexAt(QPoint(399, 100)), -1);
    }

    void plotsOfNothingAndOfOneValueArePainted()
    {
        CPlotView plot;
        plot.resize(400, 300);
        for (const std::vector<double>& vctValues :
             {std::vector<double>(), {0.0}, {kUndefined}, {7.0}, {HUGE_VAL, 1e300}, {-3.0, -3.0}})
            for (const bool bBars : {false, true})
                for (const QSize size : {QSize(400, 300), QSize(1, 1), QSize(60, 40)}) {
                    SPlot sPlot = Bars(vctValues);
                    sPlot.bBars = bBars;
                    sPlot.bLogarithmic = bBars;
                    plot.resize(size);
                    plot.SetPlot(sPlot);
                    QCOMPARE(plot.grab().toImage().size(), size);
                    QVERIFY(plot.IndexAt({size.width() / 2, 10}) < std::max(1, sPlot.Count()));
                }
        plot.SetPlot({});
        QVERIFY(!plot.grab().isNull());
    }

    void theMouseTellsTheValueBelowIt()
    {
        CPlotView plot;
        plot.resize(400, 300);
        plot.SetPlot(Bars({1, 4, 0, 2}));
        plot.show();
        QVERIFY(QTest::qWaitForWindowExposed(&plot));
        QSignalSpy hover(&plot, &CPlotView::signal_Hover);
        const auto move = [&plot](const QPoint& pos) {
            QMouseEvent event(QEvent::MouseMove, pos, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&plot, &event);
        };
        move(plot.PointOf(2, 1.0).toPoint());
        move(plot.PointOf(2, 1.0).toPoint() + QPoint(1, 0));
        QCOMPARE(hover.count(), 1);
        QCOMPARE(hover[0][0].toInt(), 2);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&plot, &leave);
        QCOMPARE(hover.last()[0].toInt(), -1);
    }

    void aTableHasALineForEachPlace()
    {
        SPlot sPlot = Bars({1, 0.5});
        sPlot.dblStart = 2.0;
        sPlot.dblStep = 256.0;
        sPlot.vctSeries.push_back({QStringLiteral("Red"), Qt::red, {kUndefined, 3}});
        QCOMPARE(sPlot.ToTable(','), QByteArray("Value,Grey,Red\n2,1,\n258,0.5,3\n"));
    }

    void theHistogramIsOfTheImageOrOfTheSelectedShape()
    {
        CPanels f;
        QVERIFY(f.HasBars(f.CountsOf(nullptr)));
        QVERIFY(CPanels::Says(*f.histogram, QStringLiteral("Whole image")));
        const ObjectPtr pBox = f.AddRectangle(30, 40, 10, 20);
        pBox->SetName(QStringLiteral("door"));
        pBox->SetSelected(true);
        const CRectangle box(30, 40, 10, 20);
        QVERIFY(f.HasBars(f.CountsOf(&box)));
        const auto grey = *MeasureRegion(*f.images.GetCurrentImage(), &box, EStatistics::Full).grey;
        const auto nMode = static_cast<std::size_t>(grey.mode);
        const auto number = &CMeasurementModel::NumberText;
        const QString strGrey =
            QStringLiteral("Grey: N 200, mean %1, deviation %2, minimum %3, maximum %4, mode %5 (%6)")
                .arg(number(grey.mean), number(grey.deviation), number(grey.min), number(grey.max),
                     number(grey.mode))
                .arg(grey.histogram[nMode]);
        QVERIFY2(CPanels::Says(*f.histogram, QStringLiteral("door\n") + strGrey), qPrintable(strGrey));
        pBox->MoveTopLeftTo({50, 60});
        const CRectangle moved(50, 60, 10, 20);
        QVERIFY(f.HasBars(f.CountsOf(&moved)));
        f.geometry.ClearObject();
        QVERIFY(f.HasBars(f.CountsOf(nullptr)));
        f.images.SetCurrentImage(MakeTestImage(200, 150, 3, 5));
        QVERIFY(f.HasBars(f.CountsOf(nullptr)));
        f.images.Clear();
        QTRY_COMPARE(f.Bars().Count(), 0);
    }

    void theHistogramFollowsWhatIsDrawn()
    {
        CPanels f;
        f.ctrl->slot_SelectROIRectangle();
        f.Move({11, 11});
        f.Press({10, 10});
        f.Move({15, 15});
        f.Move({30, 40});
        const CRectangle box(10, 10, 20, 30);
        QVERIFY(f.HasBars(f.CountsOf(&box)));
        f.Release({30, 40});
    }

    void channelsAndHeightsCanBeChosen()
    {
        CPanels f;
        QVERIFY(f.HasBars(f.CountsOf(nullptr)));
        const auto statistics = MeasureRegion(*f.images.GetCurrentImage(), nullptr, EStatistics::Full);
        CPanels::Choose(*f.histogram, "Weighted grey");
        QVERIFY(f.HasBars(statistics.weightedGrey->histogram));
        CPanels::Choose(*f.histogram, "Colors");
        QCOMPARE(f.Bars().vctSeries.size(), std::size_t(3));
        QVERIFY(f.HasBars(statistics.channels[0].histogram));
        CPanels::Choose(*f.histogram, "Blue");
        QVERIFY(f.HasBars(statistics.channels[2].histogram));
        f.histogram->findChild<QCheckBox*>()->setChecked(true);
        QVERIFY(f.Bars().bLogarithmic);
        const auto pGrey = MakeTestImage(50, 40, 2);
        f.images.SetCurrentImage(pGrey);
        QVERIFY(f.HasBars(MeasureRegion(*pGrey, nullptr, EStatistics::Full).channels[0].histogram));
        CPanels::Choose(*f.histogram, "Alpha");
        QVERIFY(f.HasBars(MeasureRegion(*pGrey, nullptr, EStatistics::Full).channels[1].histogram));
    }

    void sixteenBitsAreShownInBinsOfManyValues()
    {
        CHistogramView view;
        auto image = std::make_shared<CImage>();
        QCOMPARE(image->Create(4, 4, 1, 16, EImageType::Interleaved, 1), 0);
        reinterpret_cast<unsigned short*>(image->GetPixel(1, 1))[0] = 700;
        view.SetStatistics(MeasureRegion(*image, nullptr, EStatistics::Full), 16, QString());
        QCOMPARE(view.GetPlot()->GetPlot().dblStep, 256.0);
        QCOMPARE(view.GetPlot()->GetPlot().vctSeries[0].vctValues[2], 1.0);
        Q_EMIT view.GetPlot()->signal_Hover(2);
        QVERIFY(CPanels::Says(view, QStringLiteral("Value 512 - 767: 1")));
        QVERIFY(CPanels::Says(view, QStringLiteral("maximum 700, mode 0")));
        Q_EMIT view.GetPlot()->signal_Hover(-1);
        QVERIFY(!CPanels::Says(view, QStringLiteral("Value 512")));
    }

    void aShapeWithoutPixelsHasAnEmptyHistogram()
    {
        CPanels f;
        const ObjectPtr pBox = f.AddRectangle(1000, 1000, 10, 20);
        pBox->SetSelected(true);
        QVERIFY(CPanels::Says(*f.histogram, QStringLiteral("N 0")));
    }

    void theProfileIsOfTheSelectedLine()
    {
        CPanels f;
        QVERIFY(CPanels::Says(*f.profile, QStringLiteral("Select a ruler")));
        const ObjectPtr pBox = f.AddRectangle(30, 40, 10, 20);
        const ObjectPtr pLine = f.AddLine(10, 20, 40, 60);
        pBox->SetSelected(true);
        pLine->SetSelected(true);
        QTRY_COMPARE(f.Curve().Count(), 51);
        const auto profile = TakeProfile(*f.images.GetCurrentImage(), {{10, 20}, {40, 60}});
        CPanels::Choose(*f.profile, "Green");
        QCOMPARE(f.Curve().vctSeries[0].vctValues, profile.channels[1]);
        CPanels::Choose(*f.profile, "Grey");
        QCOMPARE(f.Curve().vctSeries[0].vctValues[7],
                 (profile.channels[0][7] + profile.channels[1][7] + profile.channels[2][7]) / 3.0);
        CPanels::Choose(*f.profile, "Weighted grey");
        QCOMPARE(f.Curve().vctSeries[0].vctValues[7], 0.299 * profile.channels[0][7] +
                                                          0.587 * profile.channels[1][7] +
                                                          0.114 * profile.channels[2][7]);
        QVERIFY(CPanels::Says(*f.profile, QStringLiteral("line: length 50 pixel")));
        SProfileOptions options;
        options.width = 5;
        CPanels::Choose(*f.profile, "Red");
        f.profile->findChild<QSpinBox*>()->setValue(5);
        const auto wide = TakeProfile(*f.images.GetCurrentImage(), {{10, 20}, {40, 60}}, options).channels[0];
        QTRY_COMPARE(f.Curve().vctSeries[0].vctValues, wide);
        pLine->SetSelected(false);
        QTRY_COMPARE(f.Curve().Count(), 0);
    }

    void theProfileIsInUnits()
    {
        CPanels f;
        f.profileCtrl->SetCalibration([](const CImageView2DCtrl&) {
            CCalibration calibration;
            return calibration.Set({"mm", 0.5, 0.5}).empty() ? calibration : CCalibration();
        });
        f.AddLine(10, 20, 40, 60)->SetSelected(true);
        QVERIFY(CPanels::Says(*f.profile, QStringLiteral("line: length 25 mm")));
        QCOMPARE(f.Curve().strX, QStringLiteral("Distance [mm]"));
        QCOMPARE(f.Curve().dblStep, 0.5);
        Q_EMIT f.profile->GetPlot()->signal_Hover(3);
        QVERIFY(CPanels::Says(*f.profile, QStringLiteral("1.500 mm: ")));
    }

    void aPlotIsCopiedAsPictureAndAsValues()
    {
        CPanels f;
        QVERIFY(f.HasBars(f.CountsOf(nullptr)));
        f.histogram->slot_CopyPicture();
        const QImage picture = QApplication::clipboard()->image();
        QCOMPARE(picture.size(), f.histogram->GetPlot()->size() * 2);
        QCOMPARE(picture.pixelColor(1, 1), QColor(Qt::white));
        f.histogram->slot_CopyValues();
        const QStringList lstLines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
        QCOMPARE(lstLines.first(), QStringLiteral("Value\tGrey"));
        QCOMPARE(lstLines[8], QStringLiteral("7\t%1").arg(f.CountsOf(nullptr)[7]));
        QApplication::clipboard()->setText(QStringLiteral("mine"));
        f.profile->slot_CopyPicture();
        f.profile->slot_CopyValues();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("mine"));
    }

    void aPlotIsSavedAsPictureOrAsTable()
    {
        CPanels f;
        QVERIFY(f.HasBars(f.CountsOf(nullptr)));
        const QTemporaryDir folder;
        QSignalSpy saved(f.histogramCtrl.get(), &CPlotCtrl::signal_Saved);
        QSignalSpy failed(f.histogramCtrl.get(), &CPlotCtrl::signal_Failed);
        const QSize size = f.histogram->GetPlot()->size();
        f.histogramCtrl->slot_SaveTo(folder.filePath(QStringLiteral("a.png")));
        f.histogramCtrl->slot_SaveTo(folder.filePath(QStringLiteral("a.CSV")));
        QTRY_COMPARE(saved.count(), 2);
        QCOMPARE(QImage(folder.filePath(QStringLiteral("a.png"))).size(), size * 2);
        QCOMPARE(ContentOf(folder.filePath(QStringLiteral("a.CSV"))), f.Bars().ToTable(','));
        f.histogramCtrl->slot_SaveTo(folder.filePath(QStringLiteral("none/a.png")));
        QTRY_COMPARE(failed.count(), 1);
        QVERIFY(failed[0][0].toString().contains(QStringLiteral("none/a.png")));
    }

    void aHostGivesOtherTexts()
    {
        CPanels f;
        QVERIFY(f.HasBars(f.CountsOf(nullptr)));
        f.histogram->SetTexts([](const QString& strText) {
            return strText == QLatin1String("Grey") ? QStringLiteral("Gris") : strText;
        });
        QCOMPARE(f.histogram->findChild<QComboBox*>()->currentText(), QStringLiteral("Gris"));
        QVERIFY(CPanels::Says(*f.histogram, QStringLiteral("Gris: N")));
        QVERIFY(f.Bars().ToTable(',').startsWith("Value,Grey\n"));
    }

    void everythingMayDieFirst()
    {
        CPanels f;
        f.AddLine(10, 20, 40, 60)->SetSelected(true);
        delete f.histogram;
        QTRY_COMPARE(f.Curve().Count(), 51);
        f.histogramCtrl->slot_Save();
        f.histogramCtrl->slot_SaveTo(QStringLiteral("/nowhere"));
        f.ctrl.reset();
        QTRY_COMPARE(f.Curve().Count(), 0);
        f.profileCtrl.reset();
        QVERIFY(CPanels::Says(*f.profile, QStringLiteral("Select a ruler")));
    }
};

VANTOR_TEST_MAIN(tst_Plots)
#include "tst_Plots.moc"
