// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CMeasuresView and CMeasuresCtrl: the measurements of what is selected.
#include <VantorCommon/measure/CMeasuresCtrl.h>
#include <VantorCommon/measure/CMeasuresView.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QGroupBox>
#include <QLabel>

using namespace Vantor::Algorithms;
using namespace Vantor::Geometry;

namespace
{
class CPanel : public EditFixture
{
public:
    CPanel()
    {
        panel = new CMeasuresView(&host);
        panel->setGeometry(410, 0, 250, 300);
        toolDock->hide();
        panelCtrl = std::make_unique<CMeasuresCtrl>(panel);
        panelCtrl->SetTarget(ctrl.get());
        panel->show();
    }
    QGroupBox* Box() const { return panel->findChild<QGroupBox*>(); }
    /// The lines, a name and a value each.
    QStringList Lines() const
    {
        const auto lstLabels = Box()->findChildren<QLabel*>();
        const QStringList lstNames = lstLabels[0]->text().split(QLatin1Char('\n'));
        const QStringList lstValues = lstLabels[1]->text().split(QLatin1Char('\n'));
        QStringList lstLines;
        for (int i = 0; i < lstNames.size(); ++i)
            lstLines << lstNames[i] + QStringLiteral(": ") + lstValues.value(i);
        return lstLines;
    }
    bool Says(const QString& strLine) const
    {
        return QTest::qWaitFor([&] { return Box()->isVisible() && Lines().contains(strLine); });
    }

    CMeasuresView* panel = nullptr;
    std::unique_ptr<CMeasuresCtrl> panelCtrl;
};
} // namespace

class tst_CMeasures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsSelectedIsShownWithoutWhatItDoesNotHave()
    {
        CPanel f;
        const auto pBox = f.AddRectangle(30, 40, 10, 20);
        QCoreApplication::processEvents();
        QVERIFY(!f.Box()->isVisible());
        pBox->SetSelected(true);
        QVERIFY(f.Says(QStringLiteral("Area [pixel\u00b2]: 200")));
        QVERIFY(f.Says(QStringLiteral("Pixels: 200")));
        QVERIFY(f.Says(QStringLiteral("Perimeter [pixel]: 60")));
        QCOMPARE(f.Lines().size(), 7); // neither length nor angle
        pBox->SetSelected(false);
        QTRY_VERIFY(!f.Box()->isVisible());
        f.Add(std::make_shared<CLine>(CPoint<double>(0, 0), CPoint<double>(3, 4)))->SetSelected(true);
        QVERIFY(f.Says(QStringLiteral("Length [pixel]: 5")));
        QVERIFY(f.Says(QStringLiteral("Angle [\u00b0]: -53.130")));
    }

    void itFollowsTheShapeAndTheImage()
    {
        CPanel f;
        const auto pBox = f.AddRectangle(30, 40, 10, 20);
        pBox->SetSelected(true);
        QVERIFY(f.Says(QStringLiteral("Pixels: 200")));
        pBox->MoveTopLeftTo({195, 145});
        QVERIFY(f.Says(QStringLiteral("Pixels: 25")));
        f.images.SetCurrentImage(MakeTestImage(198, 150, 1));
        QVERIFY(f.Says(QStringLiteral("Pixels: 15")));
        f.geometry.ClearObject();
        QTRY_VERIFY(!f.Box()->isVisible());
    }

    void aCalibrationGivesUnits()
    {
        CPanel f;
        f.AddRectangle(30, 40, 10, 20)->SetSelected(true);
        f.panelCtrl->SetCalibration([](const CImageView2DCtrl&) {
            CCalibration calibration;
            return calibration.Set({"mm", 0.5, 0.5}).empty() ? calibration : CCalibration();
        });
        QVERIFY(f.Says(QStringLiteral("Area [mm\u00b2]: 50")));
        f.panel->SetTexts([](const QString& strText) { return strText.toUpper(); });
        QVERIFY(f.Says(QStringLiteral("AREA [mm\u00b2]: 50")));
    }

    void everythingMayDieFirst()
    {
        CPanel f;
        f.AddRectangle(30, 40, 10, 20)->SetSelected(true);
        QVERIFY(f.Says(QStringLiteral("Pixels: 200")));
        f.ctrl.reset();
        QTRY_VERIFY(!f.Box()->isVisible());
        delete f.panel;
        f.panelCtrl->Follow();
        QCoreApplication::processEvents();
        CMeasuresCtrl nothing(nullptr);
        nothing.SetTarget(nullptr);
        QCoreApplication::processEvents();
    }
};

VANTOR_TEST_MAIN(tst_CMeasures)
#include "tst_CMeasures.moc"
