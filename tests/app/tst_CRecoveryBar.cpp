// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// After a crash: what was not saved is offered. A window that is destroyed without being closed stands for
// it.
#include "CAnnotationFiles.h"
#include "CRecoveryBar.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/job/CJobs.h>

#include <QPushButton>

namespace
{
/// Leaves a rectangle unsaved on each picture.
bool Crash(const QStringList& lstPictures)
{
    Host host;
    if (!host.Show(lstPictures))
        return false;
    for (int i = 0; i < lstPictures.size(); ++i) {
        host.View(i)->setFocus();
        host.DrawRectangle(i);
    }
    return static_cast<int>(host.Annotations(0)) == 1;
}

CRecoveryBar* BarOf(const Host& host)
{
    return host.window.findChild<CRecoveryBar*>();
}

QString TextOf(const Host& host)
{
    QString strText;
    for (const QLabel* pLabel : BarOf(host)->findChildren<QLabel*>())
        strText += pLabel->text();
    return strText;
}

void Press(const Host& host, const char* pText)
{
    for (QPushButton* pButton : BarOf(host)->findChildren<QPushButton*>())
        if (pButton->text() == QLatin1String(pText))
            return pButton->click();
    QFAIL("no such button");
}
} // namespace

class tst_CRecoveryBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void thereIsNoBarAfterAnOrdinaryEnd()
    {
        Host host;
        QVERIFY(host.Show());
        QCoreApplication::processEvents();
        QVERIFY(!BarOf(host)->isVisible());
    }

    void restoreOpensTheImagesWithTheirAnnotationsUnsaved()
    {
        const Pictures pictures;
        const QStringList lstPictures{pictures.Add(QStringLiteral("a.png")),
                                      pictures.Add(QStringLiteral("b.png"))};
        QVERIFY(Crash(lstPictures));
        Host host;
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        QVERIFY2(TextOf(host).contains(QStringLiteral("a.png")) &&
                     TextOf(host).contains(QStringLiteral("b.png")),
                 qPrintable(TextOf(host)));
        Press(host, "Restore");
        QVERIFY(!BarOf(host)->isVisible());
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(host.Annotations(i), 1);
            QVERIFY(StoreOf(host, i)->HasUnsaved());
        }
        QCOMPARE(host.ShownViewers(), 2);
        QVERIFY(host.window.isWindowModified());
    }

    void imagesAreRestoredWhileTheWindowLives()
    {
        const Pictures pictures;
        const QStringList lstPictures{pictures.Add(QStringLiteral("a.png")),
                                      pictures.Add(QStringLiteral("b.png"))};
        for (const QString& strPicture : lstPictures) // a session each
            QVERIFY(Crash({strPicture}));
        Host host;
        host.SetBackground(true);
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        Press(host, "Restore");
        QVERIFY(!BarOf(host)->isVisible());
        QCOMPARE(host.Annotations(0) + host.Annotations(1), 0);
        QCOMPARE(AnnotationRecovery::Find().size(), std::size_t(2)); // kept until they are there
        QTRY_VERIFY(host.Annotations(0) == 1 && host.Annotations(1) == 1);
        QTRY_VERIFY(AnnotationRecovery::Find().empty());
        QVERIFY(!BarOf(host)->isVisible());
    }

    void whatIsGivenUpWhileItIsRestoredStaysOffered()
    {
        const Pictures pictures;
        QVERIFY(Crash({pictures.Add(QStringLiteral("a.png"))}));
        Host host;
        host.SetBackground(true);
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        Press(host, "Restore");
        for (const auto& pJob : CJobs::Get().GetJobs())
            CJobs::Get().Cancel(pJob);
        QTRY_VERIFY(BarOf(host)->isVisible());
        QCOMPARE(AnnotationRecovery::Find().size(), std::size_t(1));
        QVERIFY(!CtrlOf(host, 0)->GetCurrentImgage());
        Press(host, "Restore");
        QTRY_COMPARE(host.Annotations(0), 1);
        QTRY_VERIFY(AnnotationRecovery::Find().empty());
    }

    void whatSeveralImagesOfAViewerHadIsRestoredToEach()
    {
        const Pictures pictures;
        const QStringList lstPictures{pictures.Add(QStringLiteral("a.png")),
                                      pictures.Add(QStringLiteral("b.png")),
                                      pictures.Add(QStringLiteral("c.png"))};
        {
            Host host;
            QVERIFY(host.Show());
            host.window.OpenFiles(lstPictures, QStringLiteral("1x1"));
            host.DrawRectangle(0);
            CtrlOf(host, 0)->slot_SelectImage(2);
            host.DrawRectangle(0);
            host.DrawRectangle(0);
        }
        Host host;
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        QVERIFY2(TextOf(host).contains(QStringLiteral("a.png, c.png")), qPrintable(TextOf(host)));
        Press(host, "Restore");
        QVERIFY(!BarOf(host)->isVisible());
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 2);
        QCOMPARE(CountOf(host, 0, 0), 1);
        QCOMPARE(CountOf(host, 0, 1), 2);
        QVERIFY(StoreOf(host, 0)->HasUnsaved(0) && StoreOf(host, 0)->HasUnsaved(1));
    }

    void whatWasOnATurnedImageIsRestoredToItsPlacesOnTheFile()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        const auto boxOf = [](const Host& host) {
            return host.Viewer(0)->Get2DDrawableObjects().at(0)->GetBoundary().normalized().toRect();
        };
        QRect before;
        {
            Host host;
            QVERIFY(host.Show({strPicture}));
            host.DrawRectangle(0);
            before = boxOf(host);
            host.Entry("Edit", "Rotate Left")->trigger();
            QVERIFY(boxOf(host) != before);
        }
        Host host;
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        Press(host, "Restore");
        QCOMPARE(boxOf(host), before);
    }

    void whatIsRestoredStandsAboveWhatIsStoredBesideTheImage()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        QVERIFY(Pictures::Write(Pictures::Beside(strPicture),
                                R"({"format":"vantor-annotations","version":1,"pages":[]})"));
        QVERIFY(Crash({strPicture}));
        Host host;
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        bool bLoaded = false;
        connect(StoreOf(host, 0), &CAnnotationStore::signal_Loaded, [&] { bLoaded = true; });
        Press(host, "Restore");
        QVERIFY(!QTest::qWaitFor([&] { return bLoaded; }, 300));
        QCOMPARE(host.Annotations(0), 1);
    }

    void laterKeepsThemAndDiscardDoesNot()
    {
        const Pictures pictures;
        QVERIFY(Crash({pictures.Add(QStringLiteral("a.png"))}));
        {
            Host host;
            QVERIFY(host.Show());
            QTRY_VERIFY(BarOf(host)->isVisible());
            Press(host, "Later");
            QVERIFY(!BarOf(host)->isVisible());
        }
        QCOMPARE(AnnotationRecovery::Find().size(), std::size_t(1));
        Host host;
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        Press(host, "Discard");
        QVERIFY(!BarOf(host)->isVisible());
        QVERIFY(AnnotationRecovery::Find().empty());
    }

    void whatHasNoEmptyViewerStaysOffered()
    {
        const Pictures pictures;
        QVERIFY(Crash({pictures.Add(QStringLiteral("a.png"))}));
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto, kPhoto, kPhoto}));
        QTRY_VERIFY(BarOf(host)->isVisible());
        Press(host, "Restore");
        QVERIFY(BarOf(host)->isVisible());
        QVERIFY(!host.Message().isEmpty());
        QCOMPARE(AnnotationRecovery::Find().size(), std::size_t(1));
    }

    void annotationsOfAnImageThatIsGoneAreKeptInAFile()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        QVERIFY(Crash({strPicture}));
        QVERIFY(QFile::remove(strPicture));
        Host host;
        QVERIFY(host.Show());
        QTRY_VERIFY(BarOf(host)->isVisible());
        Press(host, "Restore");
        QVERIFY2(host.Message().contains(CAnnotationFiles::DataFolder()), qPrintable(host.Message()));
        const QStringList lstFiles = QDir(CAnnotationFiles::DataFolder()).entryList(QDir::Files);
        QCOMPARE(lstFiles.size(), 1);
        Vantor::Annotations::SDocument document;
        const auto report = Vantor::Annotations::Load(
            (CAnnotationFiles::DataFolder() + QLatin1Char('/') + lstFiles[0]).toStdString(), {}, {},
            document);
        QCOMPARE(report.failure, std::string());
        QCOMPARE(document.pages.at(0).objects.size(), std::size_t(1));
        QVERIFY(AnnotationRecovery::Find().empty());
    }
};

VANTOR_TEST_MAIN(tst_CRecoveryBar)
#include "tst_CRecoveryBar.moc"
