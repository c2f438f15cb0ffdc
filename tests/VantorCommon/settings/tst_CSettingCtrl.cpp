// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/database/DatabaseSupport.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/database/CDatabaseModelFactory.h>
#include <VantorCommon/settings/CSettingCtrl.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/settings/CSettingModel.h>

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace
{
const QString c_strFolderKey = QStringLiteral("GENERAL_PROGRAM_CONFIG_DIR");
const QString c_strKeyX = QStringLiteral("GENERAL_PDF_RESOLUTION_X");
const QString c_strKeyY = QStringLiteral("GENERAL_PDF_RESOLUTION_Y");

QStringList Ok(const QString& strKey, int nTimes = 1)
{
    QStringList lines;
    while (nTimes-- > 0)
        lines << QStringLiteral("0:Update Setting {%1} OK").arg(strKey);
    return lines;
}

/// The controller with its dialog on a folder of its own.
struct SFixture {
    explicit SFixture(const QString& strFolder) : strFile(strFolder + QStringLiteral("/settings.data"))
    {
        CSettingManager::Set(c_strFolderKey, strFolder);
        pCtrl = std::make_unique<CSettingCtrl>(&dialog);
    }

    /// The rows of the file, read by somebody else.
    QStringList Rows() const
    {
        CDatabaseModelFactory factory;
        CDatabaseHelper helper(&factory);
        return helper.OpenDatabase(QStringLiteral("localhost"), strFile, QString(), QString())
                   ? RowsOf(helper)
                   : QStringList{QStringLiteral("it does not open")};
    }
    QSpinBox* X() const { return dialog.findChild<QSpinBox*>(c_strKeyX); }
    QSpinBox* Y() const { return dialog.findChild<QSpinBox*>(c_strKeyY); }
    bool Open()
    {
        dialog.show();
        dialog.activateWindow();
        return QTest::qWaitForWindowActive(&dialog);
    }

    QString strFile;
    CSettingDlg dialog;
    std::unique_ptr<CSettingCtrl> pCtrl;
};
} // namespace

class tst_CSettingCtrl : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_pDir;
    std::unique_ptr<LogRecorder> m_pLog;

    /// What a new process reads after its start: GetDouble(key, -1).
    double ReadAfterRestart(const QString& strKey) const
    {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--read"), m_pDir->path(), strKey});
        return process.waitForFinished(60000) ? process.readAllStandardOutput().toDouble() : -2.0;
    }

private Q_SLOTS:
    void init()
    {
        m_pDir = std::make_unique<QTemporaryDir>();
        m_pLog = std::make_unique<LogRecorder>();
    }
    void cleanup()
    {
        for (const QString& strKey : {c_strKeyX, c_strKeyY, c_strFolderKey})
            CSettingManager::Set(strKey, QVariant());
        QCOMPARE(m_pLog->Take(), QStringList());
    }

    void theFirstStartMakesTheFileInTheVantorFolderOfTheDocumentsWithItsTable()
    {
        const QString strFolder =
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QStringLiteral("/Vantor");
        QVERIFY2(strFolder.startsWith(QString::fromLocal8Bit(qgetenv("HOME"))), qPrintable(strFolder));
        QDir(strFolder).removeRecursively();
        CSettingCtrl ctrl(nullptr);
        QCOMPARE(QDir(strFolder).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("settings.data")});
        QVERIFY(ctrl.UpdateParameter(QStringLiteral("key"), 1));
        QCOMPARE(m_pLog->Take(), Ok(QStringLiteral("key")));
        QDir(strFolder).removeRecursively();
    }

    void aFreshStoreReturnsTheDefaultAndTheDialogShowsZero()
    {
        const SFixture f(m_pDir->path());
        QCOMPARE(CSettingManager::GetInt(c_strKeyX, 0), 0);
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 0);
        QCOMPARE(f.dialog.GetGeneralPDFResolutionY(), 0);
        QCOMPARE(f.Rows(), QStringList());
    }

    void aNamedFolderIsNotMadeAndTheSettingsLiveInMemoryOnly()
    {
        const QString strFolder = m_pDir->filePath(QStringLiteral("none"));
        const SFixture f(strFolder);
        QCOMPARE(m_pLog->Take(), QStringList{QStringLiteral("2:Cannot load settings")});
        QVERIFY(!QFileInfo::exists(strFolder));
        QVERIFY(!f.pCtrl->OpenSettingFile());
        QSignalSpy failed(f.pCtrl.get(), &CSettingCtrl::signal_Failed);
        QVERIFY(!f.pCtrl->UpdateParameter(c_strKeyX, 5));
        QCOMPARE(failed.count(), 1);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral("The setting GENERAL_PDF_RESOLUTION_X cannot be stored."));
        QCOMPARE(m_pLog->Take(),
                 QStringList{QStringLiteral("3:Update Setting {GENERAL_PDF_RESOLUTION_X} NG")});
        CSettingManager::Set(c_strKeyX, 7);
        QCOMPARE(m_pLog->Take(),
                 QStringList{QStringLiteral("3:Update Setting {GENERAL_PDF_RESOLUTION_X} NG")});
        QCOMPARE(CSettingManager::GetInt(c_strKeyX, 0), 7);
        QCOMPARE(failed.count(), 2);
        f.pCtrl->LoadParameter();
        QCOMPARE(failed.count(), 3);
        QCOMPARE(failed[2][0].toString(), QStringLiteral("The settings cannot be loaded."));
        QCOMPARE(m_pLog->Take(), QStringList{QStringLiteral("2:Cannot load settings")});
    }

    void aFolderThatSomebodyHoldsIsNotWaitedForWithoutEnd()
    {
        constexpr int c_nPatienceMs = 30000; // on a loaded machine
        const int nFolder = ::open(m_pDir->path().toUtf8().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        QVERIFY(nFolder >= 0);
        QCOMPARE(::flock(nFolder, LOCK_EX), 0);
        QElapsedTimer timer;
        timer.start();
        {
            const SFixture f(m_pDir->path());
            QVERIFY(timer.elapsed() < c_nPatienceMs);
            QCOMPARE(m_pLog->Take(), QStringList{QStringLiteral("2:Cannot load settings")});
            QVERIFY(!QFile::exists(f.strFile));
        }
        ::close(nFolder);
        const SFixture f(m_pDir->path());
        QVERIFY(QFile::exists(f.strFile));
        m_pLog->Take();
    }

    void anEmptyFileCountsAsAbsent()
    {
        QVERIFY(WriteFile(m_pDir->filePath(QStringLiteral("settings.data")), QByteArray()));
        const SFixture f(m_pDir->path());
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("key"), 1));
        QCOMPARE(f.Rows(), QStringList{QStringLiteral("key=1:int")});
        m_pLog->Take();
    }

    void whatAnInterruptedStartLeftIsReplaced()
    {
        QVERIFY(WriteFile(m_pDir->filePath(QStringLiteral("settings.data.new")), "half a file"));
        QVERIFY(WriteFile(m_pDir->filePath(QStringLiteral("settings.data.new-journal")), "half a journal"));
        const SFixture f(m_pDir->path());
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("key"), 1));
        QCOMPARE(QDir(m_pDir->path()).entryList(QDir::Files), QStringList{QStringLiteral("settings.data")});
        m_pLog->Take();
    }

    void anExistingFileIsOpenedAndKeepsItsRows()
    {
        {
            const SFixture f(m_pDir->path());
            QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("key"), 1));
        }
        const SFixture f(m_pDir->path());
        QVERIFY(f.pCtrl->OpenSettingFile());
        QCOMPARE(f.Rows(), QStringList{QStringLiteral("key=1:int")});
        m_pLog->Take();
    }

    void theTypeNamesThatAreStored()
    {
        const SFixture f(m_pDir->path());
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("b"), true));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("d"), 0.1 + 0.2));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("i"), -300));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("l"), 1LL << 40));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("o"), QDate(2016, 5, 1)));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("s"), QStringLiteral("a \"b\" %s;")));
        QCOMPARE(f.Rows(),
                 QStringList({QStringLiteral("b=true:bool"), QStringLiteral("d=0.30000000000000004:double"),
                              QStringLiteral("i=-300:int"), QStringLiteral("l=1099511627776:"),
                              QStringLiteral("o=2016-05-01:"), QStringLiteral("s=a \"b\" %s;:string")}));
        m_pLog->Take();
    }

    void deliberateAStoredNumberIsReplacedByABareOne()
    {
        const SFixture f(m_pDir->path());
        for (const char* pKey : {"b", "d", "i", "o", "s"})
            QVERIFY(f.pCtrl->UpdateParameter(QString::fromLatin1(pKey), QStringLiteral("before")));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("b"), true));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("d"), 0.1 + 0.2));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("i"), -300));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("o"), QDate(2016, 5, 1)));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("s"), QStringLiteral("after")));
        QCOMPARE(f.Rows(), QStringList({QStringLiteral("b=1:bool"), QStringLiteral("d=0.3:double"),
                                        QStringLiteral("i=-300:int"), QStringLiteral("o=2016-05-01:"),
                                        QStringLiteral("s=after:string")}));
        m_pLog->Take();
    }

    void everyWriteIsLogged()
    {
        const SFixture f(m_pDir->path());
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("a %s key"), 1));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("a %s key"), 2));
        QCOMPARE(m_pLog->Take(), Ok(QStringLiteral("a %s key"), 2));
        f.pCtrl->slot_UpdateSettingParameter(QStringLiteral("b"), 3);
        QCOMPARE(m_pLog->Take(), Ok(QStringLiteral("b")));
        QCOMPARE(f.Rows(), QStringList({QStringLiteral("a %s key=2:int"), QStringLiteral("b=3:int")}));
    }

    void aValueOrKeyWithASingleQuoteIsRefusedAndNoRowIsTouched()
    {
        const SFixture f(m_pDir->path());
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("a"), QStringLiteral("1")));
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("b"), QStringLiteral("2")));
        m_pLog->Take();
        for (const char* pBad : {"it's", "'", "x' OR '1'='1", "x', TYPE='y' WHERE ''='' --"}) {
            const QString strBad = QString::fromLatin1(pBad);
            QVERIFY(!f.pCtrl->UpdateParameter(QStringLiteral("a"), strBad));
            QVERIFY(!f.pCtrl->UpdateParameter(QStringLiteral("new"), strBad));
            QVERIFY(!f.pCtrl->UpdateParameter(strBad, QStringLiteral("v")));
            // The NG line alone: no statement ran and failed.
            QCOMPARE(m_pLog->Take(), QStringList({QStringLiteral("3:Update Setting {a} NG"),
                                                  QStringLiteral("3:Update Setting {new} NG"),
                                                  QStringLiteral("3:Update Setting {%1} NG").arg(strBad)}));
        }
        QCOMPARE(f.Rows(), QStringList({QStringLiteral("a=1:string"), QStringLiteral("b=2:string")}));
    }

    void aZeroCharacterTouchesNoOtherRow()
    {
        const SFixture f(m_pDir->path());
        QVERIFY(f.pCtrl->UpdateParameter(QStringLiteral("a"), QStringLiteral("1")));
        const QString strZero = QStringLiteral("a") + QChar(0) + QStringLiteral("b");
        QVERIFY(!f.pCtrl->UpdateParameter(strZero, QStringLiteral("2")));
        QVERIFY(!f.pCtrl->UpdateParameter(QStringLiteral("a"), strZero));
        QCOMPARE(f.Rows(), QStringList{QStringLiteral("a=1:string")});
        m_pLog->Take();
    }

    void deliberateEveryLoadedValueIsATextWhateverItsType()
    {
        {
            const SFixture f(m_pDir->path());
            QVERIFY(f.pCtrl->UpdateParameter(c_strKeyX, 300));
            QVERIFY(f.pCtrl->UpdateParameter(c_strKeyY, QStringLiteral("no number")));
        }
        QVERIFY(CSettingModel::GetInstance()->Get(c_strKeyX).isNull());
        QSignalSpy spy(CSettingModel::GetInstance(), &CSettingModel::signal_UpdateSettingParameter);
        const SFixture f(m_pDir->path());
        QCOMPARE(CSettingModel::GetInstance()->Get(c_strKeyX), QVariant(QStringLiteral("300")));
        QCOMPARE(CSettingModel::GetInstance()->Get(c_strKeyX).type(), QVariant::String);
        QCOMPARE(CSettingManager::GetInt(c_strKeyX, 0), 300);
        QCOMPARE(CSettingManager::GetInt(c_strKeyY, 7), 7); // a stored text that is not a number
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 300);
        QCOMPARE(f.dialog.GetGeneralPDFResolutionY(), 0);
        QCOMPARE(spy.count(), 2); // the folder is the same
        m_pLog->Take();
    }

    void aStoredTextThatIsNotANumberReadsAsTheCallersDefault()
    {
        {
            const SFixture f(m_pDir->path());
            QVERIFY(f.pCtrl->UpdateParameter(c_strKeyX, QStringLiteral("seven")));
        }
        const SFixture f(m_pDir->path());
        QCOMPARE(CSettingManager::GetString(c_strKeyX, QString()), QStringLiteral("seven"));
        QCOMPARE(CSettingManager::GetInt(c_strKeyX, 7), 7);
        m_pLog->Take();
    }

    void loadingWritesNothingBack()
    {
        {
            const SFixture f(m_pDir->path());
            QVERIFY(f.pCtrl->UpdateParameter(c_strKeyX, 300));
        }
        m_pLog->Take();
        const SFixture f(m_pDir->path());
        QCOMPARE(m_pLog->Take(), QStringList());
        QCOMPARE(f.Rows(), QStringList{c_strKeyX + QStringLiteral("=300:int")});
    }

    void anIntegerIsStoredWithTheTypeIntAndReadAsADoubleAfterARestart()
    {
        const SFixture f(m_pDir->path());
        CSettingManager::Set(c_strKeyX, 300);
        QCOMPARE(f.Rows(), QStringList{c_strKeyX + QStringLiteral("=300:int")});
        QCOMPARE(ReadAfterRestart(c_strKeyX), 300.0);
        QCOMPARE(ReadAfterRestart(c_strKeyY), -1.0);
        m_pLog->Take();
    }

    void settingTheSameValueTwiceWritesToTheFileOnce()
    {
        const SFixture f(m_pDir->path());
        CSettingManager::Set(c_strKeyX, 200);
        CSettingManager::Set(c_strKeyX, 200);
        QCOMPARE(m_pLog->Take(), Ok(c_strKeyX));
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 200);
    }

    void typingThreeHundredKeyByKeyEndsWithThreeHundredStored()
    {
        SFixture f(m_pDir->path());
        QVERIFY(f.Open());
        f.X()->setFocus();
        f.X()->selectAll();
        QTest::keyClicks(f.X(), QStringLiteral("300"));
        QCOMPARE(m_pLog->Take(), Ok(c_strKeyX, 3));
        QCOMPARE(f.X()->value(), 300);
        QCOMPARE(f.X()->text(), QStringLiteral("300"));
        QTest::keyClick(f.X(), Qt::Key_Tab);
        QVERIFY(f.Y()->hasFocus());
        QTest::keyClicks(f.Y(), QStringLiteral("150"));
        QTest::keyClick(f.Y(), Qt::Key_Up);
        QCOMPARE(m_pLog->Take(), Ok(c_strKeyY, 4));
        QCOMPARE(f.Rows(), QStringList({c_strKeyX + QStringLiteral("=300:int"),
                                        c_strKeyY + QStringLiteral("=151:int")}));
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 300);
        QCOMPARE(ReadAfterRestart(c_strKeyX), 300.0);
        QCOMPARE(ReadAfterRestart(c_strKeyY), 151.0);
    }

    void deliberateAnEditOfTheUserReachesTheFileButNotTheReaders()
    {
        SFixture f(m_pDir->path());
        CSettingManager::Set(c_strKeyX, 72);
        f.X()->setValue(300);
        QCOMPARE(CSettingManager::GetInt(c_strKeyX, 0), 72);
        QCOMPARE(f.Rows(), QStringList{c_strKeyX + QStringLiteral("=300:int")});
        // Another setting changes: the box goes on showing what the file holds.
        CSettingManager::Set(c_strKeyY, 10);
        QCOMPARE(f.X()->value(), 300);
        QCOMPARE(f.Y()->value(), 10);
        CSettingManager::Set(c_strKeyX, 100);
        QCOMPARE(f.X()->value(), 100);
        QCOMPARE(f.Rows(), QStringList({c_strKeyX + QStringLiteral("=100:int"),
                                        c_strKeyY + QStringLiteral("=10:int")}));
        m_pLog->Take();
    }

    void aFileThatIsNoDatabaseIsLeftAloneAndTheDefaultsHold()
    {
        const QByteArray text = QByteArray("this is a letter, not a database\n").repeated(100);
        QVERIFY(WriteFile(m_pDir->filePath(QStringLiteral("settings.data")), text));
        const SFixture f(m_pDir->path());
        QCOMPARE(m_pLog->Take(), QStringList{QStringLiteral("2:Cannot load settings")});
        QCOMPARE(f.dialog.GetGeneralPDFResolutionX(), 0);
        QVERIFY(!f.pCtrl->UpdateParameter(c_strKeyX, 5));
        QCOMPARE(m_pLog->Take(),
                 QStringList{QStringLiteral("3:Update Setting {GENERAL_PDF_RESOLUTION_X} NG")});
        QFile file(f.strFile);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), text);
    }

    void theDialogMayDieFirstAndThereIsNoUndo()
    {
        CSettingManager::Set(c_strFolderKey, m_pDir->path());
        auto pDialog = std::make_unique<CSettingDlg>();
        CSettingCtrl ctrl(pDialog.get());
        pDialog.reset();
        QVERIFY(ctrl.UpdateParameter(c_strKeyX, 5));
        ctrl.UpdateParameterView();
        QVERIFY(!ctrl.Undo());
        QVERIFY(!ctrl.Redo());
        m_pLog->Take();
    }

    void twoControllersOnOneFileBothStore()
    {
        const SFixture first(m_pDir->path());
        const SFixture second(m_pDir->path());
        QVERIFY(first.pCtrl->UpdateParameter(QStringLiteral("a"), 1));
        QVERIFY(second.pCtrl->UpdateParameter(QStringLiteral("a"), 2));
        QVERIFY(first.pCtrl->UpdateParameter(QStringLiteral("b"), 3));
        QCOMPARE(second.Rows(), QStringList({QStringLiteral("a=2:int"), QStringLiteral("b=3:int")}));
        m_pLog->Take();
    }
};

/// As "--read FOLDER KEY" it is the program after a restart, which prints what it finds.
int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc == 4 && QByteArray(argv[1]) == "--read") {
        CSettingManager::Set(c_strFolderKey, QString::fromLocal8Bit(argv[2]));
        CSettingDlg dialog;
        const CSettingCtrl ctrl(&dialog);
        std::printf("%g\n", CSettingManager::GetDouble(QString::fromLocal8Bit(argv[3]), -1.0));
        return 0;
    }
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    tst_CSettingCtrl test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CSettingCtrl.moc"
