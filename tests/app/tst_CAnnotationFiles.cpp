// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Where the host keeps annotations, and what it says when it cannot.
#include "CAnnotationFiles.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>

namespace
{
const QByteArray kDamaged = "{ \"format\": \"vantor-annotations\", \"vers";
const QByteArray kLater = R"({"format":"vantor-annotations","version":9,"readable_by":9,"pages":[]})";

/// A picture with one rectangle in the file beside it.
QString Annotated(const Pictures& pictures, const QString& strName)
{
    const QString strPicture = pictures.Add(strName);
    Host host;
    if (!host.Show({strPicture}))
        return {};
    host.DrawRectangle(0);
    host.Entry("File", "Save")->trigger();
    return QTest::qWaitFor([&] { return !StoreOf(host, 0)->HasUnsaved(); }) ? strPicture : QString();
}
/// As another program would: two points beside the picture, for one of that side.
void ChangeElsewhere(const QString& strPicture, int nSide = 0)
{
    Vantor::Annotations::SObject point;
    point.kind = "point";
    point.numbers = {1, 2};
    Vantor::Annotations::SDocument document;
    document.pages.resize(1);
    document.pages[0].objects = {point, point};
    document.pages[0].width = document.pages[0].height = nSide;
    QVERIFY(Vantor::Annotations::Save(document, Pictures::Beside(strPicture).toStdString(),
                                      Vantor::Annotations::kOwnFormat, {})
                .failure.empty());
}

/// How many annotations stand in a file; -1 when it cannot be read.
int CountIn(const QString& strPath)
{
    Vantor::Annotations::SDocument document;
    const auto report = Vantor::Annotations::Load(strPath.toStdString(), {}, {}, document);
    return report.failure.empty() ? static_cast<int>(document.pages.at(0).objects.size()) : -1;
}
} // namespace

class tst_CAnnotationFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void whatIsSavedBesideAnImageIsShownWhenItIsOpenedAndIsClean()
    {
        const Pictures pictures;
        const QString strPicture = Annotated(pictures, QStringLiteral("a.png"));
        QVERIFY(QFile::exists(Pictures::Beside(strPicture)));
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_COMPARE(host.Annotations(0), 1);
        QVERIFY(!StoreOf(host, 0)->HasUnsaved());
        QVERIFY(!host.window.isWindowModified());
        host.Entry("Edit", "Undo")->trigger(); // one step
        QCOMPARE(host.Annotations(0), 0);
        QCOMPARE(host.Message(), QString());
    }

    void saveIsOfferedOnlyWhileThereIsSomethingToSave()
    {
        const Pictures pictures;
        Host host;
        QVERIFY(host.Show({pictures.Add(QStringLiteral("a.png"))}));
        QVERIFY(!host.IsEnabled("File", "Save"));
        host.DrawRectangle(0);
        QVERIFY(host.IsEnabled("File", "Save"));
        host.View(0)->setFocus();
        host.Key(Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY(!StoreOf(host, 0)->HasUnsaved());
        QVERIFY(!host.IsEnabled("File", "Save"));
    }

    void aFileThatCannotBeReadIsNamedAndNeverOverwritten_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("damaged") << kDamaged;
        QTest::newRow("later version") << kLater;
    }
    void aFileThatCannotBeReadIsNamedAndNeverOverwritten()
    {
        QFETCH(QByteArray, bytes);
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        QVERIFY(Pictures::Write(Pictures::Beside(strPicture), bytes));
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_VERIFY2(host.Message().contains(QStringLiteral("a.png.vantor.json")),
                     qPrintable(host.Message()));
        host.DrawRectangle(0);
        QVERIFY(StoreOf(host, 0)->HasUnsaved());
        host.View(0)->setFocus();
        host.Key(Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY2(host.Message().contains(QStringLiteral("Cannot save the annotations in")),
                     qPrintable(host.Message()));
        QCOMPARE(Pictures::Bytes(Pictures::Beside(strPicture)), bytes);
        QVERIFY(!QFile::exists(CAnnotationFiles::InDataFolder(strPicture)));
        QVERIFY(StoreOf(host, 0)->HasUnsaved());
    }

    /// A name too long for the suffix stands for every place that cannot be written, also for root.
    void whatCannotStandBesideTheImageGoesIntoTheFolderOfDataAndIsFoundThere()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QString(245, QLatin1Char('a')) + QStringLiteral(".png"));
        QVERIFY(!strPicture.isEmpty());
        {
            Host host;
            QVERIFY(host.Show({strPicture}));
            host.DrawRectangle(0);
            host.Entry("File", "Save")->trigger();
            QTRY_VERIFY(!StoreOf(host, 0)->HasUnsaved());
            QVERIFY2(host.Message().contains(CAnnotationFiles::DataFolder()), qPrintable(host.Message()));
        }
        QVERIFY(QFile::exists(CAnnotationFiles::InDataFolder(strPicture)));
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_COMPARE(host.Annotations(0), 1);
    }

    void theNewerOfTwoFilesIsShown()
    {
        const Pictures pictures;
        const QString strPicture = Annotated(pictures, QStringLiteral("a.png"));
        const QString strElsewhere = CAnnotationFiles::InDataFolder(strPicture);
        QVERIFY(QDir().mkpath(CAnnotationFiles::DataFolder()));
        QVERIFY(Pictures::Write(strElsewhere, R"({"format":"vantor-annotations","version":1,"pages":[]})"));
        QFile file(strElsewhere);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(1), QFileDevice::FileModificationTime));
        file.close();
        Host host;
        QString strLoaded;
        connect(StoreOf(host, 0), &CAnnotationStore::signal_Loaded,
                [&](const QString& strPath) { strLoaded = strPath; });
        QVERIFY(host.Show({strPicture}));
        QTRY_COMPARE(strLoaded, strElsewhere);
        QVERIFY(QFile::remove(strElsewhere));
    }

    void twoWindowsOnOneFileTheLaterOneAsks_data()
    {
        QTest::addColumn<QString>("strButton");
        QTest::addColumn<int>("nInFile");
        QTest::addColumn<bool>("bSaved");
        QTest::newRow("overwrite") << QStringLiteral("Overwrite") << 1 << true;
        QTest::newRow("save as") << QStringLiteral("Save As...") << 2 << true;
        QTest::newRow("cancel") << QStringLiteral("Cancel") << 2 << false;
    }
    void twoWindowsOnOneFileTheLaterOneAsks()
    {
        QFETCH(QString, strButton);
        QFETCH(int, nInFile);
        QFETCH(bool, bSaved);
        const Pictures pictures;
        const QString strPicture = Annotated(pictures, QStringLiteral("a.png"));
        const QString strOther = pictures.folder.filePath(QStringLiteral("mine.vantor.json"));
        Host later;
        QVERIFY(later.Show({strPicture}));
        QTRY_COMPARE(later.Annotations(0), 1);
        CtrlOf(later, 0)->GetGeometryModel()->ClearObject();
        later.DrawRectangle(0);
        ChangeElsewhere(strPicture);
        Answers answers(strButton);
        ChooseFile(strOther);
        later.Entry("File", "Save")->trigger();
        QTRY_VERIFY(!answers.lstAsked.isEmpty());
        QTRY_COMPARE(!StoreOf(later, 0)->HasUnsaved(), bSaved);
        QCOMPARE(answers.lstAsked.size(), 1);
        QVERIFY2(answers.lstAsked.first().contains(QStringLiteral("a.png.vantor.json")),
                 qPrintable(answers.lstAsked.first()));
        QCOMPARE(CountIn(Pictures::Beside(strPicture)), nInFile);
        QCOMPARE(QFile::exists(strOther), strButton == QStringLiteral("Save As..."));
    }

    void aFileThatAppearedMeanwhileIsAskedFor()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        Host host;
        QVERIFY(host.Show({strPicture}));
        host.DrawRectangle(0);
        ChangeElsewhere(strPicture);
        Answers cancel(QStringLiteral("Cancel"));
        host.Entry("File", "Save")->trigger();
        QTRY_COMPARE(cancel.lstAsked.size(), 1);
        QCOMPARE(CountIn(Pictures::Beside(strPicture)), 2);
        QVERIFY(StoreOf(host, 0)->HasUnsaved());
    }

    void whatSavesItselfLeavesAChangedFileAloneAndTellsOnce()
    {
        const Pictures pictures;
        const QString strPicture = Annotated(pictures, QStringLiteral("a.png"));
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_COMPARE(host.Annotations(0), 1);
        host.Entry("Settings", "Save Annotations by Themselves")->trigger();
        ChangeElsewhere(strPicture);
        int nTried = 0;
        connect(StoreOf(host, 0), &CAnnotationStore::signal_Saved, this, [&] { ++nTried; });
        host.DrawRectangle(0);
        QTRY_COMPARE(nTried, 1);
        QVERIFY2(host.Message().contains(QStringLiteral("a.png.vantor.json")), qPrintable(host.Message()));
        host.DrawRectangle(0); // which removes the message
        QTRY_COMPARE(nTried, 2);
        QCOMPARE(host.Message(), QString());
        QCOMPARE(CountIn(Pictures::Beside(strPicture)), 2);
        QVERIFY(StoreOf(host, 0)->HasUnsaved());
    }

    void annotationsOfAnImageOfAnotherSizeAreAskedForOnce_data()
    {
        QTest::addColumn<QString>("strButton");
        QTest::addColumn<int>("nShown");
        QTest::newRow("scale") << QStringLiteral("Scale") << 2;
        QTest::newRow("keep") << QStringLiteral("Keep") << 2;
        QTest::newRow("do not show") << QStringLiteral("Do Not Show") << 0;
    }
    void annotationsOfAnImageOfAnotherSizeAreAskedForOnce()
    {
        QFETCH(QString, strButton);
        QFETCH(int, nShown);
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        ChangeElsewhere(strPicture, 10);
        Host host;
        QVERIFY(host.Show());
        Answers answers(strButton);
        QCOMPARE(host.window.OpenFiles({strPicture}), 1);
        QTRY_COMPARE(answers.lstAsked.size(), 1);
        QVERIFY2(answers.lstAsked[0].contains(QStringLiteral("10 x 10 pixels")),
                 qPrintable(answers.lstAsked[0]));
        QTRY_COMPARE(host.Annotations(0), nShown);
        QCOMPARE(StoreOf(host, 0)->HasUnsaved(), strButton == QStringLiteral("Scale"));
        if (nShown > 0)
            return;
        // What is not shown stays in its file, and nobody is asked again.
        host.DrawRectangle(0);
        host.Entry("File", "Save")->trigger();
        QVERIFY2(host.Message().contains(QStringLiteral("It stays as it is.")), qPrintable(host.Message()));
        CtrlOf(host, 0)->DeleteSelectedObjects();
        CtrlOf(host, 0)->slot_SelectImage(0);
        host.Entry("Edit", "Rotate Left")->trigger();
        QCOMPARE(answers.lstAsked.size(), 1);
        QCOMPARE(CountIn(Pictures::Beside(strPicture)), 2);
    }

    void aNewVersionOfThePictureIsTold()
    {
        const Pictures pictures;
        const QString strPicture = Annotated(pictures, QStringLiteral("a.png"));
        QFile file(strPicture);
        QVERIFY(file.open(QIODevice::Append) && file.write("x") == 1);
        file.close();
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_COMPARE(host.Annotations(0), 1);
        QVERIFY2(host.Message().contains(QStringLiteral("another version of this picture")),
                 qPrintable(host.Message()));
    }

    void aChangedImageIsSavedWithItsAnnotations()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        const QSize before = QImage(strPicture).size();
        Host host;
        QVERIFY(host.Show({strPicture}));
        host.Entry("Edit", "Rotate Left")->trigger();
        QVERIFY(host.window.isWindowModified());
        host.DrawRectangle(0);
        host.Entry("File", "Save")->trigger();
        QTRY_VERIFY(!host.window.isWindowModified());
        QCOMPARE(QImage(strPicture).size(), before.transposed());
        QVERIFY(QFile::exists(Pictures::Beside(strPicture)));
    }

    void aTurnedImageIsSavedWithTheAnnotationsThatItHad()
    {
        const Pictures pictures;
        const QString strPicture = Annotated(pictures, QStringLiteral("a.png"));
        {
            Host host;
            QVERIFY(host.Show({strPicture}));
            QTRY_COMPARE(host.Annotations(0), 1);
            host.Entry("Edit", "Rotate Left")->trigger();
            host.Entry("File", "Save")->trigger();
            QTRY_VERIFY(!host.window.isWindowModified());
        }
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_COMPARE(host.Annotations(0), 1);
    }

    void annotationsAreSavedBesideTheImageOnWhichTheyWereBegun()
    {
        const Pictures pictures;
        const QString strFirst = pictures.Add(QStringLiteral("a.png"));
        const QString strSecond = pictures.Add(QStringLiteral("b.png"));
        Host host;
        QVERIFY(host.Show());
        host.window.OpenFiles({strFirst, strSecond}, QStringLiteral("1x1"));
        host.DrawRectangle(0);
        CtrlOf(host, 0)->slot_Next();
        host.Entry("File", "Save")->trigger();
        QTRY_VERIFY(!StoreOf(host, 0)->HasUnsaved());
        QVERIFY(QFile::exists(Pictures::Beside(strFirst)));
        QVERIFY(!QFile::exists(Pictures::Beside(strSecond)));
    }

    void nothingIsWrittenBesideAnImageThatNeverHadAnnotations()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        Host host;
        QVERIFY(host.Show({strPicture}));
        host.DrawRectangle(0);
        CtrlOf(host, 0)->DeleteSelectedObjects();
        QVERIFY(StoreOf(host, 0)->HasUnsaved());
        host.Entry("File", "Save")->trigger();
        QTRY_VERIFY(!StoreOf(host, 0)->HasUnsaved());
        QVERIFY(!QFile::exists(Pictures::Beside(strPicture)));
    }

    void theySaveThemselvesOnlyWhenThatIsWished_data()
    {
        QTest::addColumn<bool>("bWished");
        QTest::newRow("no") << false;
        QTest::newRow("yes") << true;
    }
    void theySaveThemselvesOnlyWhenThatIsWished()
    {
        QFETCH(bool, bWished);
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        Host host;
        QVERIFY(host.Show({strPicture}));
        QAction* pEntry = host.Entry("Settings", "Save Annotations by Themselves");
        QVERIFY(pEntry && !pEntry->isChecked());
        if (bWished)
            pEntry->trigger();
        host.DrawRectangle(0);
        // What is off is seen by waiting for as long as it would take.
        const bool bSaved = QTest::qWaitFor([&] { return !StoreOf(host, 0)->HasUnsaved(); }, 3500);
        QCOMPARE(bSaved, bWished);
        QCOMPARE(QFile::exists(Pictures::Beside(strPicture)), bWished);
    }

    void thoseOfAnImageThatIsNotSavedWaitForIt()
    {
        const Pictures pictures;
        const QString strPicture = Annotated(pictures, QStringLiteral("a.png"));
        const QByteArray before = Pictures::Bytes(Pictures::Beside(strPicture));
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_COMPARE(host.Annotations(0), 1);
        host.Entry("Settings", "Save Annotations by Themselves")->trigger();
        host.Entry("Edit", "Rotate Left")->trigger();
        QVERIFY(!QTest::qWaitFor([&] { return !StoreOf(host, 0)->HasUnsaved(); }, 3500));
        QCOMPARE(Pictures::Bytes(Pictures::Beside(strPicture)), before);
        CtrlOf(host, 0)->SaveFile(strPicture);
        QTRY_VERIFY(!StoreOf(host, 0)->HasUnsaved());
        QVERIFY(Pictures::Bytes(Pictures::Beside(strPicture)) != before);
    }
};

VANTOR_TEST_MAIN(tst_CAnnotationFiles)
#include "tst_CAnnotationFiles.moc"
