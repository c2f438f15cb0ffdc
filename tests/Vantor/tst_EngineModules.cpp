// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The engines are loaded when they are used for the first time, from the folder "vantor" beside the library.
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <Vantor/ocr/CVOCR.h>
#include <Vantor/pdf/CPDFReader.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <thread>
#include <vector>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CVOCR;
using Vantor::Algorithms::ERegionMode;
using Vantor::Utils::CPDFReader;

namespace
{
const QString kImage = QStringLiteral("ocr/HelloGoogle.tif");
const QString kDocument = QStringLiteral("pdf/pdfium_hello_world.pdf");
const QStringList kModules{QStringLiteral("vantor-filter.so"), QStringLiteral("vantor-ocr.so"),
                           QStringLiteral("vantor-pdf")};

/// Whether a library is part of this process.
bool IsMapped(const char* name)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(name);
}

/// Runs a program that uses each engine once, with the library of a folder.
bool RunProbe(QProcess& probe, const QString& strFolder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_LIBRARY_PATH"), strFolder);
    // What lives until the end of the process is no leak.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    probe.setProcessEnvironment(environment);
    probe.start(QCoreApplication::applicationDirPath() + QStringLiteral("/engine_probe"),
                {TestDataPath(kImage), TestDataPath(kDocument), QStringLiteral(VANTOR_TEST_TESSDATA)});
    return probe.waitForFinished();
}

std::wstring DataPath(const QString& strName)
{
    return TestDataPath(strName).toStdWString();
}
} // namespace

class tst_EngineModules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLoadedBeforeItsFirstUse();
    void modulesLieBesideTheLibrary_data();
    void modulesLieBesideTheLibrary();
    void theLibraryMayBeReachedThroughALinkElsewhere();
};

void tst_EngineModules::nothingIsLoadedBeforeItsFirstUse()
{
    const CBaseModel model;
    QVERIFY(IsMapped("/libVantorCommon.so") && IsMapped("/libVantor.so"));
    CImage image;
    CVOCR ocr;
    CPDFReader unused;
    QCOMPARE(image.Load(DataPath(kImage)), 0);
    QCOMPARE(ocr.SetLanguageData("eng", VANTOR_TEST_TESSDATA), 0);
    QCOMPARE(unused.Read(L"/no/such.pdf", L""), int(CPDFReader::EReadResult_CannotOpen));
    for (const char* name : {"/libtesseract", "/liblept", "/libgomp", "/libpoppler", "/libhwy", "/vantor-"})
        QVERIFY2(!IsMapped(name), name);

    // The renderer of documents stays in processes of its own, also when several threads use it.
    std::vector<int> vctResults(4, -1);
    std::vector<std::thread> vctThreads;
    for (int& nResult : vctResults)
        vctThreads.emplace_back([&nResult] {
            CPDFReader reader;
            nResult = reader.Read(DataPath(kDocument), L"");
        });
    for (std::thread& thread : vctThreads)
        thread.join();
    QCOMPARE(vctResults, std::vector<int>(4, 0));
    QVERIFY(!IsMapped("/libpoppler") && !IsMapped("/libtesseract") && !IsMapped("/libhwy"));
    QCOMPARE(ocr.Decode(&image, nullptr), 0);
    QVERIFY(IsMapped("/libtesseract") && !IsMapped("/libhwy"));
    QCOMPARE(image.SobelX(nullptr, ERegionMode::Inside, 0.0), 0);
    QVERIFY(IsMapped("/libhwy"));
}

void tst_EngineModules::modulesLieBesideTheLibrary_data()
{
    QTest::addColumn<QString>("modules"); // "copied", "broken" or none
    QTest::addColumn<bool>("works");
    QTest::addColumn<QString>("reason");
    QTest::newRow("there") << QStringLiteral("copied") << true << QString();
    QTest::newRow("missing") << QString() << false << QStringLiteral("No such file or directory.");
    QTest::newRow("broken") << QStringLiteral("broken") << false << QStringLiteral("invalid ELF header.");
}

void tst_EngineModules::modulesLieBesideTheLibrary()
{
    QFETCH(QString, modules);
    QFETCH(bool, works);
    QFETCH(QString, reason);
    const QTemporaryDir folder;
    const QString strLibrary = QStringLiteral(VANTOR_TEST_LIBRARY);
    const QDir modulesOfBuild(QFileInfo(strLibrary).dir().filePath(QStringLiteral("vantor")));
    const QString strModules = folder.filePath(QStringLiteral("vantor/"));
    QVERIFY(QFile::copy(strLibrary, folder.filePath(QStringLiteral("libVantor.so.1"))));
    if (!modules.isEmpty())
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("vantor")));
    for (const QString& strModule : kModules) {
        if (modules == QStringLiteral("copied"))
            QVERIFY(QFile::copy(modulesOfBuild.filePath(strModule), strModules + strModule));
        QFile file(strModules + strModule);
        if (modules == QStringLiteral("broken"))
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(4096, 'x')) > 0);
    }

    QProcess probe;
    QVERIFY(RunProbe(probe, folder.path()));
    QCOMPARE(probe.readAllStandardError(), QByteArray());
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 0);
    const auto line = [&](const char* szEngine, const char* szName, const char* szModule) {
        const QString strFault = QStringLiteral("1 The %1 cannot be loaded: %2%3: ")
                                     .arg(QLatin1String(szName), strModules, QLatin1String(szModule));
        return QLatin1String(szEngine) + QLatin1Char(' ') + (works ? QStringLiteral("0 ") : strFault);
    };
    const QStringList lstLines = QString::fromUtf8(probe.readAllStandardOutput()).split(QLatin1Char('\n'));
    QCOMPARE(lstLines.size(), 5);
    const auto isReported = [&](const QString& strLine, const QString& strStart) {
        return works ? strLine == strStart : strLine.startsWith(strStart) && strLine.endsWith(reason);
    };
    QVERIFY2(isReported(lstLines[0], line("ocr", "OCR engine", "vantor-ocr.so")), qPrintable(lstLines[0]));
    const QString strNoProgram =
        QStringLiteral("pdf 1 1 The program vantor-pdf, which reads documents, cannot be started: %1. "
                       "It is in the package vantor-pdf.")
            .arg(modules == QStringLiteral("broken") ? QStringLiteral("Permission denied")
                                                     : QStringLiteral("No such file or directory"));
    QCOMPARE(lstLines[1], works ? QStringLiteral("pdf 0 0 ") : strNoProgram);
    QVERIFY2(isReported(lstLines[2], line("sobel", "filter", "vantor-filter.so")), qPrintable(lstLines[2]));
    QCOMPARE(lstLines[3], QStringLiteral("window 0 ")); // it needs no module
}

void tst_EngineModules::theLibraryMayBeReachedThroughALinkElsewhere()
{
    const QTemporaryDir folder;
    QVERIFY(
        QFile::link(QStringLiteral(VANTOR_TEST_LIBRARY), folder.filePath(QStringLiteral("libVantor.so.1"))));
    QProcess probe;
    QVERIFY(RunProbe(probe, folder.path()));
    QCOMPARE(probe.readAllStandardError(), QByteArray());
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.readAllStandardOutput(), QByteArray("ocr 0 \npdf 0 0 \nsobel 0 \nwindow 0 \n"));
}

VANTOR_CORE_TEST_MAIN(tst_EngineModules)
#include "tst_EngineModules.moc"
