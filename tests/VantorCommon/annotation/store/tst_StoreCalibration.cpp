// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What pixels are in units, as CAnnotationStore keeps it.
#include <Vantor/geometry/CLine.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <tests/support/TestMain.h>

#include "StoreBench.h"

#include <QDir>

using Vantor::Algorithms::CCalibration;
using Vantor::Annotations::SCalibration;

namespace
{
CCalibration Of(const SCalibration& size)
{
    CCalibration calibration;
    if (!calibration.Set(size).empty())
        qFatal("no calibration");
    return calibration;
}

const SCalibration kSize{"mm", 0.5, 0.25, 10.0, 20.0};

/// One whose view has the focus, as undo wants it.
struct FocusedBench : StoreBench {
    explicit FocusedBench(bool bJournal = false) : StoreBench(bJournal)
    {
        view.show();
        view.activateWindow();
        view.setFocus();
        [this] { QTRY_VERIFY(view.hasFocus()); }();
    }
};

SCenterOptions PerImage()
{
    SCenterOptions sOptions;
    sOptions.bAnnotationsPerImage = true;
    sOptions.bCarryAnnotations = true;
    return sOptions;
}
} // namespace

class tst_StoreCalibration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingItIsAStepThatIsSaved()
    {
        FocusedBench b;
        QSignalSpy spy(&b.store(), &CAnnotationStore::signal_ChangeCalibration);
        QVERIFY(b.store().GetCalibration().IsPixel());
        b.store().SetCalibration(CCalibration()); // as it is
        QVERIFY(!b.ctrl.CanUndo());
        b.store().SetCalibration(Of(kSize));
        QVERIFY(b.store().GetCalibration() == Of(kSize));
        QVERIFY(b.store().HasUnsaved());
        QCOMPARE(spy.count(), 1);
        QVERIFY(b.ctrl.Undo());
        QVERIFY(b.store().GetCalibration().IsPixel());
        QVERIFY(!b.store().HasUnsaved());
        QVERIFY(b.ctrl.Redo());
        QVERIFY(b.store().GetCalibration() == Of(kSize));
        QCOMPARE(spy.count(), 3);
        const auto document = b.store().TakeDocument();
        QVERIFY(document.pages.at(0).calibration);
        QVERIFY(Of(*document.pages[0].calibration) == Of(kSize));
        b.store().SetCalibration(CCalibration());
        QVERIFY(!b.store().TakeDocument().pages.at(0).calibration);
    }

    void aFileBringsIt()
    {
        StoreBench b;
        b.store().SetCalibration(Of(kSize));
        const auto document = b.store().TakeDocument();
        FocusedBench other;
        QSignalSpy spy(&other.store(), &CAnnotationStore::signal_ChangeCalibration);
        other.store().Apply(document);
        QVERIFY(other.store().GetCalibration() == Of(kSize));
        QCOMPARE(spy.count(), 1);
        QVERIFY(other.ctrl.Undo());
        QVERIFY(other.store().GetCalibration().IsPixel());
    }

    void aFileWithACalibrationThatIsNoneCountsAsPixels()
    {
        StoreBench b;
        auto document = StoreBench::Many(1);
        document.pages[0].calibration = SCalibration{"", 1.0, 1.0};
        b.store().Apply(document);
        QVERIFY(b.store().GetCalibration().IsPixel());
        QVERIFY(b.store().TakeDocument().pages.at(0).calibration); // and stays in the file
    }

    void eachImageHasItsOwnWithSetsForEachImage()
    {
        FocusedBench b;
        b.ctrl.SetOptions(PerImage());
        b.images.SetImages({MakeTestImage(20, 10, 1), MakeTestImage(30, 10, 1)});
        QSignalSpy spy(&b.store(), &CAnnotationStore::signal_ChangeCalibration);
        b.store().SetCalibration(Of(kSize));
        b.images.SetCurrentIndex(1);
        QVERIFY(b.store().GetCalibration().IsPixel());
        QCOMPARE(spy.count(), 2);
        QVERIFY(b.ctrl.Undo()); // shows the page on which it was made
        QCOMPARE(b.images.GetCurrentIndex(), 0);
        QVERIFY(b.store().GetCalibration().IsPixel());
        QVERIFY(b.ctrl.Redo());
        QVERIFY(b.store().GetCalibration() == Of(kSize));
    }

    void itTurnsWithTheImageAndStaysInTheFile()
    {
        StoreBench b; // 200 x 150
        b.ctrl.SetOptions(PerImage());
        b.images.SetImages({MakeTestImage(200, 150, 3)});
        b.store().SetCalibration(Of(kSize));
        b.ctrl.slot_RotateRight();
        QTRY_COMPARE(b.ctrl.GetCurrentImgage()->GetWidth(), 150);
        // Clockwise: (x, y) becomes (150 - y, x).
        QVERIFY(b.store().GetCalibration() == Of({"mm", 0.25, 0.5, 130.0, 10.0}));
        QVERIFY(Of(*b.store().TakeDocument().pages.at(0).calibration) == Of(kSize));
        b.store().SetCalibration(Of({"cm", 3.0, 4.0, 130.0, 10.0}));
        QVERIFY(Of(*b.store().TakeDocument().pages.at(0).calibration) == Of({"cm", 4.0, 3.0, 10.0, 20.0}));
    }

    void anotherFileBeginsWithPixels()
    {
        StoreBench b;
        b.store().SetCalibration(Of(kSize));
        QSignalSpy spy(&b.store(), &CAnnotationStore::signal_ChangeCalibration);
        b.store().Clear(EAnnotationsGone_Loaded);
        QVERIFY(b.store().GetCalibration().IsPixel());
        QCOMPARE(spy.count(), 1);
    }

    void rulersAreToldWithTheOptionOnly()
    {
        FocusedBench b;
        b.store().Paste({StoreBench::MakeObject("ruler", {0, 0, 10, 0})}, {});
        b.store().SetCalibration(Of(kSize));
        const auto second = [&](int i) { return b.geometry.GetAt(i)->GetLabel().strSecond; };
        QCOMPARE(second(0), QString());
        SCenterOptions sOptions;
        sOptions.bCalibratedRuler = true;
        b.ctrl.SetOptions(sOptions);
        QCOMPARE(second(0), QStringLiteral("5 mm"));
        b.store().Paste({StoreBench::MakeObject("ruler", {0, 0, 20, 0})}, {});
        QCOMPARE(second(0), QStringLiteral("10 mm"));
        QVERIFY(b.ctrl.Undo());
        QVERIFY(b.ctrl.Undo());
        QCOMPARE(second(0), QString());
        b.ctrl.SetOptions({});
        QVERIFY(b.ctrl.Redo());
        QCOMPARE(second(0), QString());
    }

    void aRulerThatAProgramAddsIsTold()
    {
        StoreBench b;
        SCenterOptions sOptions;
        sOptions.bCalibratedRuler = true;
        b.ctrl.SetOptions(sOptions);
        b.store().SetCalibration(Of(kSize));
        const auto pRuler = std::make_shared<CImageView2DDrawableRuler>();
        pRuler->SetData(std::make_shared<Vantor::Geometry::CLine>(Vantor::Geometry::CPoint<double>(0, 0),
                                                                  Vantor::Geometry::CPoint<double>(0, 8)));
        b.geometry.AddObject(pRuler);
        QCOMPARE(pRuler->GetLabel().strSecond, QStringLiteral("2 mm"));
    }

    void theJournalHasIt()
    {
        StoreBench b(true);
        b.store().SetCalibration(Of(kSize));
        const auto lstJournals = QDir(AnnotationRecovery::GetFolder()).entryInfoList(QDir::Files);
        QCOMPARE(lstJournals.size(), 1);
        StoreBench::Document document;
        QCOMPARE(StoreBench::ReadJournal(lstJournals[0].absoluteFilePath(), document).failure, std::string());
        QVERIFY(document.pages.at(0).calibration && Of(*document.pages[0].calibration) == Of(kSize));
    }
};

VANTOR_TEST_MAIN(tst_StoreCalibration)
#include "tst_StoreCalibration.moc"
