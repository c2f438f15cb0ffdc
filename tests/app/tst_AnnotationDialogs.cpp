// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Files of annotations that a person chooses, by the entries of the file menu.
#include "AnnotationDialogs.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <cmath>

class tst_AnnotationDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void whatIsSavedUnderANameCanBeOpenedOverAnotherImageAndIsUnsavedThere()
    {
        const Pictures pictures;
        const QString strFile = pictures.folder.filePath(QStringLiteral("mine"));
        Host host;
        QVERIFY(host.Show({pictures.Add(QStringLiteral("a.png")), pictures.Add(QStringLiteral("b.png"))}));
        host.View(0)->setFocus();
        host.DrawRectangle(0);
        ChooseFile(strFile);
        host.Entry("File", "Save Annotations As...")->trigger();
        QTRY_VERIFY(!StoreOf(host, 0)->HasUnsaved());
        host.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&host.window));
        QVERIFY(QFile::exists(Pictures::Beside(strFile))); // the suffix is added
        host.View(1)->setFocus();
        ChooseFile(Pictures::Beside(strFile));
        host.Entry("File", "Open Annotations...")->trigger();
        QCOMPARE(host.Annotations(1), 1);
        QVERIFY(StoreOf(host, 1)->HasUnsaved());
    }

    void importAddsToWhatIsThereAsOneStep()
    {
        const Pictures pictures;
        Host host;
        QVERIFY(host.Show({pictures.Add(QStringLiteral("a.png"))}));
        host.DrawRectangle(0);
        const QString strFile = pictures.folder.filePath(QStringLiteral("x.vantor.json"));
        ChooseFile(strFile);
        host.Entry("File", "Export Annotations...")->trigger();
        QTRY_VERIFY(QFile::exists(strFile));
        ChooseFile(strFile);
        host.Entry("File", "Import Annotations...")->trigger();
        QCOMPARE(host.Annotations(0), 2);
        host.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&host.window));
        host.Entry("Edit", "Undo")->trigger();
        QCOMPARE(host.Annotations(0), 1);
    }

    void whatWasMadeForAnotherSizeIsAskedFor_data()
    {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<QString>("strButton");
        QTest::addColumn<double>("dblX");
        for (const char* pEntry : {"Open Annotations...", "Import Annotations..."}) {
            QTest::addRow("%s scale", pEntry) << QByteArray(pEntry) << QStringLiteral("Scale") << 30.0;
            QTest::addRow("%s keep", pEntry) << QByteArray(pEntry) << QStringLiteral("Keep") << 10.0;
            QTest::addRow("%s leave", pEntry) << QByteArray(pEntry) << QStringLiteral("Do Not Show") << -1.0;
        }
    }
    void whatWasMadeForAnotherSizeIsAskedFor()
    {
        QFETCH(QByteArray, entry);
        QFETCH(QString, strButton);
        QFETCH(double, dblX);
        const Pictures pictures;
        const QString strFile = pictures.folder.filePath(QStringLiteral("x.vantor.json"));
        Host host;
        QVERIFY(host.Show({pictures.Add(QStringLiteral("a.png"))}));
        const auto pImage = CtrlOf(host, 0)->GetCurrentImgage();
        Vantor::Annotations::SDocument document;
        document.pages.resize(1);
        document.pages[0].objects.resize(1);
        document.pages[0].objects[0].kind = "point";
        document.pages[0].objects[0].numbers = {10, 20};
        document.pages[0].width = pImage->GetWidth() / 3;
        document.pages[0].height = pImage->GetHeight();
        QVERIFY(Save(document, strFile.toStdString(), Vantor::Annotations::kOwnFormat, {}).failure.empty());
        Answers answers(strButton);
        ChooseFile(strFile);
        host.Entry("File", entry.constData())->trigger();
        QCOMPARE(answers.lstAsked.size(), 1);
        const auto vctObjects = StoreOf(host, 0)->TakeDocument().pages.at(0).objects;
        QCOMPARE(vctObjects.empty() ? -1.0 : std::floor(vctObjects[0].numbers[0]), dblX);
    }

    void whatIsNoFileOfAnnotationsIsToldAndChangesNothing()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        host.View(0)->setFocus();
        ChooseFile(kPhoto);
        host.Entry("File", "Import Annotations...")->trigger();
        QVERIFY2(host.Message().contains(kPhoto), qPrintable(host.Message()));
        QCOMPARE(host.Annotations(0), 1);
    }

    void whatAFormatCannotSayIsShownBeforeItIsWritten_data()
    {
        QTest::addColumn<QString>("strAnswer");
        QTest::newRow("export") << "Export";
        QTest::newRow("cancel") << "Cancel";
    }
    void whatAFormatCannotSayIsShownBeforeItIsWritten()
    {
        QFETCH(QString, strAnswer);
        QWidget window;
        Answers answers(strAnswer);
        QVERIFY(AnnotationDialogs::ConfirmLoss(&window, QStringLiteral("F"), {}));
        QCOMPARE(answers.lstAsked, QStringList()); // nothing is lost
        const bool bWrite = AnnotationDialogs::ConfirmLoss(
            &window, QStringLiteral("F"),
            {{"Ruler 1", "Its colour is not kept."}, {"", "No names are kept."}});
        QCOMPARE(bWrite, strAnswer == QLatin1String("Export"));
        QCOMPARE(answers.lstAsked,
                 QStringList{QStringLiteral("A file in the format F will not say everything.\n"
                                            "Ruler 1: Its colour is not kept.\nNo names are kept.")});
    }
};

VANTOR_TEST_MAIN(tst_AnnotationDialogs)
#include "tst_AnnotationDialogs.moc"
