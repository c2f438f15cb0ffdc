// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
// The dialog "Set Scale", alone and from the menu.
#include "CScaleDlg.h"

#include "HostSupport.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

using Vantor::Algorithms::CCalibration;

namespace
{
QLineEdit* Edit(QWidget& dialog, const char* pName)
{
    return dialog.findChild<QLineEdit*>(QLatin1String(pName));
}

/// Types over what an editor holds.
void Type(QWidget& dialog, const char* pName, const QString& strText)
{
    QLineEdit* pEdit = Edit(dialog, pName);
    QVERIFY(pEdit);
    pEdit->selectAll();
    QTest::keyClicks(pEdit, strText);
}

QString Problem(QWidget& dialog)
{
    return dialog.findChild<QLabel*>(QStringLiteral("problem"))->text();
}

CImageView2DCtrl* CtrlOf(const Host& host)
{
    const auto item =
        CMVCManager::FindFirst([&](const SMVC& each) { return each.pView && each.pView == host.Viewer(0); });
    return item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl)->Get2DCtrl() : nullptr;
}
} // namespace

class tst_CScaleDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void aKnownLengthGivesTheSizeOfAPixel()
    {
        CScaleDlg dialog(CCalibration(), 40.0, {}, nullptr);
        QCOMPARE(Edit(dialog, "distance")->text(), QStringLiteral("40"));
        Type(dialog, "known", QStringLiteral("10"));
        Type(dialog, "unit", QStringLiteral("mm"));
        QCOMPARE(Edit(dialog, "width")->text(), QStringLiteral("0.25"));
        QCOMPARE(Edit(dialog, "height")->text(), QStringLiteral("0.25"));
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.GetCalibration().GetLength(40, 0), 10.0);
        QCOMPARE(dialog.GetCalibration().GetSize().unit, std::string("mm"));
    }

    void aFileMaySayHowLargeItsPixelsAre()
    {
        const auto button = [](CScaleDlg& dialog) {
            for (auto* pButton : dialog.findChildren<QPushButton*>())
                if (pButton->text() == QStringLiteral("&From the File"))
                    return pButton;
            return static_cast<QPushButton*>(nullptr);
        };
        CScaleDlg unknown(CCalibration(), 0.0, {}, nullptr);
        QVERIFY(!button(unknown)->isEnabled());
        Vantor::Algorithms::SImageMetadata metadata;
        metadata.resolutionX = metadata.resolutionY = 254.0;
        metadata.resolutionUnit = Vantor::Algorithms::EResolutionUnit::Inch;
        CScaleDlg dialog(CCalibration(), 40.0, metadata, nullptr);
        button(dialog)->click();
        QCOMPARE(Edit(dialog, "known")->text(), QStringLiteral("4"));
        dialog.accept();
        QCOMPARE(dialog.GetCalibration().GetLength(10, 0), 1.0);
        QCOMPARE(dialog.GetCalibration().GetSize().unit, std::string("mm"));
    }

    void numbersThatMakeNoCalibrationKeepItOpen()
    {
        CScaleDlg dialog(CCalibration(), 0.0, {}, nullptr);
        Type(dialog, "width", QStringLiteral("0"));
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QCOMPARE(Problem(dialog),
                 QStringLiteral("The size of a pixel is not a number from 1e-30 to 1e9 units."));
        QVERIFY(dialog.GetCalibration().IsPixel());
        Type(dialog, "width", QStringLiteral("2"));
        Type(dialog, "originY", QStringLiteral("some"));
        dialog.accept();
        QCOMPARE(Problem(dialog), QStringLiteral("The origin is not a place from -1e9 to 1e9 pixels."));
        Type(dialog, "originY", QStringLiteral("7"));
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.GetCalibration().GetSize().x, 2.0);
        QCOMPARE(dialog.GetCalibration().GetSize().y, 1.0);
        QCOMPARE(dialog.GetCalibration().GetOrigin().y, 7.0);
    }

    void pixelsComeBack()
    {
        CCalibration calibration;
        QCOMPARE(calibration.Set({"mm", 0.5, 0.25, 3.0, 4.0}), std::string());
        CScaleDlg dialog(calibration, 0.0, {}, nullptr);
        QCOMPARE(Edit(dialog, "height")->text(), QStringLiteral("0.25"));
        for (auto* pButton : dialog.findChildren<QPushButton*>())
            if (pButton->text().remove(QLatin1Char('&')) == QLatin1String("Pixels Again"))
                pButton->click();
        dialog.accept();
        QVERIFY(dialog.GetCalibration().IsPixel());
    }

    void theMenuSetsTheScaleByTheSelectedRuler()
    {
        Host host;
        QTemporaryDir folder;
        const QString strFile = folder.filePath(QStringLiteral("a.png"));
        QCOMPARE(MakeTestImage(200, 150, 3)->Save(strFile.toStdWString()), 0);
        QVERIFY(host.Show({strFile}));
        CImageView2DCtrl* pCtrl = CtrlOf(host);
        Vantor::Annotations::SObject ruler;
        ruler.kind = "ruler";
        ruler.numbers = {10, 20, 40, 60};
        pCtrl->GetAnnotationStore()->Paste({ruler}, {});
        bool bAsked = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* pDialog = qobject_cast<CScaleDlg*>(QApplication::activeModalWidget());
            QVERIFY(pDialog);
            bAsked = true;
            if (Edit(*pDialog, "distance")->text() == QLatin1String("50"))
                Type(*pDialog, "known", QStringLiteral("10"));
            Type(*pDialog, "unit", QStringLiteral("mm"));
            pDialog->accept();
        });
        host.Entry({QStringLiteral("Tools"), QStringLiteral("Set Scale...")})->trigger();
        QVERIFY(bAsked);
        QCOMPARE(pCtrl->GetAnnotationStore()->GetCalibration().GetLength(50, 0), 10.0);
        QCOMPARE(pCtrl->GetGeometryModel()->GetAt(0)->GetLabel().strSecond, QStringLiteral("10 mm"));
        QVERIFY(pCtrl->GetAnnotationStore()->HasUnsaved(0));
    }
};

VANTOR_TEST_MAIN(tst_CScaleDlg)
#include "tst_CScaleDlg.moc"
