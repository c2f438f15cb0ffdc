// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <future>
#include <memory>

namespace
{
const QString c_strLogDir = QStringLiteral("GENERAL_LOG_DIR");

QStringList ReadLines(const QString& strPath)
{
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("no file ") + strPath};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

/// Shifts the local time zone so that it is now that time of the day.
void SetLocalTime(const QTime& time)
{
    int nSeconds = QTime(0, 0).secsTo(QDateTime::currentDateTimeUtc().time()) - QTime(0, 0).secsTo(time);
    const char* pSign = nSeconds < 0 ? "-" : "";
    nSeconds = std::abs(nSeconds);
    qputenv("TZ", QStringLiteral("LOC%1%2:%3:%4")
                      .arg(QLatin1String(pSign))
                      .arg(nSeconds / 3600)
                      .arg(nSeconds / 60 % 60)
                      .arg(nSeconds % 60)
                      .toLatin1());
}
} // namespace

class tst_CLogModel : public QObject
{
    Q_OBJECT

private:
    CLogModel* m_pModel = CLogModel::GetInstance();
    std::unique_ptr<QTemporaryDir> m_pDir;

    void Add(const QString& strText)
    {
        m_pModel->AddMessage(NORMAL, strText, QDateTime(QDate(2016, 5, 1), QTime(14, 3, 7)));
    }
    void Drain()
    {
        while (!m_pModel->IsEmpty())
            m_pModel->slot_OnTimer();
    }
    static QString FileOf(const QString& strDir, const QDate& date = QDate::currentDate())
    {
        return strDir + QLatin1Char('/') + date.toString(QStringLiteral("yyyy_MM_dd")) +
               QStringLiteral(".txt");
    }
    static QString Line(const QString& strText)
    {
        return QStringLiteral("[NORMAL][2016-05-01 14:03:07] ") + strText;
    }

private Q_SLOTS:
    void init()
    {
        m_pDir = std::make_unique<QTemporaryDir>();
        CSettingManager::Set(c_strLogDir, m_pDir->path());
    }
    void cleanup()
    {
        QVERIFY(m_pModel->IsEmpty());
        qunsetenv("TZ");
    }

    void theLineOfALevel_data()
    {
        QTest::addColumn<int>("nLevel");
        QTest::addColumn<QString>("strName");
        QTest::addColumn<QString>("strLine");
        QTest::newRow("NORMAL") << 0 << "NORMAL"
                                << "[NORMAL][2016-05-01 14:03:07] Cannot load";
        QTest::newRow("DEBUG") << 1 << "DEBUG"
                               << "[DEBUG][2016-05-01 14:03:07] Cannot load";
        QTest::newRow("WARNING") << 2 << "WARNING"
                                 << "[WARNING][2016-05-01 14:03:07] Cannot load";
        QTest::newRow("ERROR") << 3 << "ERROR"
                               << "[ERROR][2016-05-01 14:03:07] Cannot load";
        QTest::newRow("above") << 4 << ""
                               << "[2016-05-01 14:03:07] Cannot load";
        QTest::newRow("below") << -1 << ""
                               << "[2016-05-01 14:03:07] Cannot load";
    }

    void theLineOfALevel()
    {
        QFETCH(int, nLevel);
        QFETCH(QString, strName);
        QFETCH(QString, strLine);
        const auto eLevel = static_cast<ELogLevel>(nLevel);
        QCOMPARE(m_pModel->ToString(eLevel), strName);
        const QDateTime dtTime(QDate(2016, 5, 1), QTime(14, 3, 7));
        QCOMPARE(m_pModel->ToString(SLogMessage{QStringLiteral("Cannot load"), eLevel, dtTime}), strLine);
    }

    void aLineShowsTheTimeInDigitsOfTwo()
    {
        const QDateTime dtTime(QDate(2026, 1, 2), QTime(3, 4, 5));
        QCOMPARE(m_pModel->ToString(SLogMessage{QStringLiteral("x"), ERROR, dtTime}),
                 QStringLiteral("[ERROR][2026-01-02 03:04:05] x"));
    }

    void theMessageTypeIsRegisteredUnderBothNames()
    {
        QVERIFY(QMetaType::type("SLogMessage") != QMetaType::UnknownType);
        QVERIFY(QMetaType::type("SLogMessage&") != QMetaType::UnknownType);
    }

    void theModelLivesOnTheGuiThread() { QCOMPARE(m_pModel->thread(), qApp->thread()); }

    void eachTickTakesOneMessage()
    {
        Add(QStringLiteral("first"));
        Add(QStringLiteral("second"));
        QSignalSpy spy(m_pModel, &CLogModel::signal_NewMessage);
        m_pModel->slot_OnTimer();
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).value<SLogMessage>().strMessage, QStringLiteral("first"));
        QVERIFY(!m_pModel->IsEmpty());
        m_pModel->slot_OnTimer();
        m_pModel->slot_OnTimer();
        QCOMPARE(spy.count(), 2);
        QVERIFY(m_pModel->IsEmpty());
    }

    void aThousandMessagesQueuedAtOnceTakeAboutTenSecondsToDrainInOrder()
    {
        QCoreApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 1000; ++i)
            Add(QString::number(i));
        QTRY_VERIFY_WITH_TIMEOUT(m_pModel->IsEmpty(), 60000);
        QVERIFY2(timer.elapsed() >= 9500, qPrintable(QString::number(timer.elapsed())));
        const QStringList lines = ReadLines(FileOf(m_pDir->path()));
        QCOMPARE(lines.size(), 1001);
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(lines.at(i), Line(QString::number(i)));
    }

    void theTimerDrainsAtMostOneHundredMessagesASecond()
    {
        QCOMPARE(m_pModel->findChild<QTimer*>()->interval(), 10);
        QCoreApplication::processEvents();
        QSignalSpy spy(m_pModel, &CLogModel::signal_NewMessage);
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 20; ++i)
            Add(QString::number(i));
        QTRY_COMPARE(spy.count(), 20);
        QVERIFY2(timer.elapsed() >= 150, qPrintable(QString::number(timer.elapsed())));
    }

    void aReceiverOnAnotherThreadGetsTheMessage()
    {
        QThread thread;
        QObject receiver;
        receiver.moveToThread(&thread);
        std::promise<SLogMessage> received;
        connect(m_pModel, &CLogModel::signal_NewMessage, &receiver, [&](const SLogMessage& sMessage) {
            received.set_value(sMessage);
            receiver.moveToThread(qApp->thread());
        });
        thread.start();
        Add(QStringLiteral("across"));
        Drain();
        auto future = received.get_future();
        QVERIFY(future.wait_for(std::chrono::seconds(30)) == std::future_status::ready);
        QCOMPARE(future.get().strMessage, QStringLiteral("across"));
        thread.quit();
        QVERIFY(thread.wait());
    }

    void aSlotMayWriteAgainButTheTakingEndIsLocked()
    {
        std::future<bool> empty;
        bool bLocked = false;
        const auto connection =
            connect(m_pModel, &CLogModel::signal_NewMessage, this, [&](const SLogMessage& sMessage) {
                if (sMessage.strMessage != QLatin1String("outer"))
                    return;
                Add(QStringLiteral("inner"));
                empty = std::async(std::launch::async, [&] { return m_pModel->IsEmpty(); });
                bLocked = empty.wait_for(std::chrono::milliseconds(50)) == std::future_status::timeout;
            });
        Add(QStringLiteral("outer"));
        m_pModel->slot_OnTimer();
        QVERIFY(bLocked);
        QVERIFY(!empty.get());
        Drain();
        disconnect(connection);
        QCOMPARE(ReadLines(FileOf(m_pDir->path())),
                 QStringList({Line(QStringLiteral("outer")), Line(QStringLiteral("inner")), QString()}));
    }

    void aTimeOfAnotherZoneIsAnnouncedAsLocalTime()
    {
        qputenv("TZ", "LOC-2");
        QSignalSpy spy(m_pModel, &CLogModel::signal_NewMessage);
        m_pModel->AddMessage(NORMAL, QStringLiteral("x"),
                             QDateTime(QDate(2016, 5, 1), QTime(12, 3, 7), Qt::UTC));
        Drain();
        const auto sMessage = spy.at(0).at(0).value<SLogMessage>();
        QCOMPARE(m_pModel->ToString(sMessage), QStringLiteral("[NORMAL][2016-05-01 14:03:07] x"));
    }

    void theFileIsUtf8WhateverTheLocale()
    {
        const QString strText = QString::fromUtf8(u8"\u1ea3nh \u8a9e \U0001F30D");
        Add(strText);
        Drain();
        QFile file(FileOf(m_pDir->path()));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), Line(strText).toUtf8() + '\n');
    }

    void controlCharactersAreShownEscapedSoThatAMessageIsOneLine()
    {
        const QString strText = QString::fromUtf8("a\r\nb\tc\x1b[31m\x7f C:\\dir\\new \xc2\x85\xe2\x80\xa8") +
                                QChar(0) + QStringLiteral("end");
        QSignalSpy spy(m_pModel, &CLogModel::signal_NewMessage);
        Add(strText);
        Drain();
        QCOMPARE(
            ReadLines(FileOf(m_pDir->path())),
            QStringList({Line(QStringLiteral("a\\r\\nb\\tc\\x1b[31m\\x7f C:\\dir\\new \\x85\\u2028\\x00end")),
                         QString()}));
        QCOMPARE(spy.at(0).at(0).value<SLogMessage>().strMessage, strText);
    }

    void anExistingFileIsContinued()
    {
        QFile file(FileOf(m_pDir->path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("earlier\n");
        file.close();
        Add(QStringLiteral("later"));
        Drain();
        QCOMPARE(ReadLines(file.fileName()),
                 QStringList({QStringLiteral("earlier"), Line(QStringLiteral("later")), QString()}));
    }

    void withoutTheSettingTheFolderIsVantorInTheDocumentsAndIsCreatedByTheFirstMessage()
    {
        const QString strDir =
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QStringLiteral("/Vantor");
        QVERIFY2(strDir.startsWith(QString::fromLocal8Bit(qgetenv("HOME"))), qPrintable(strDir));
        CSettingManager::Set(c_strLogDir, QVariant());
        QVERIFY(!QDir(strDir).exists());
        Add(QStringLiteral("default"));
        QVERIFY(!QDir(strDir).exists());
        Drain();
        QCOMPARE(ReadLines(FileOf(strDir)), QStringList({Line(QStringLiteral("default")), QString()}));
    }

    void theFolderIsCreatedWithAllItsParents()
    {
        const QString strDir = m_pDir->filePath(QStringLiteral("a/b/c"));
        QVERIFY(m_pModel->OpenLogFileCurrentDate(strDir));
        QVERIFY(QFile::exists(FileOf(strDir)));
        QVERIFY(m_pModel->OpenLogFileCurrentDate(strDir));
    }

    void aFolderThatCannotBeCreatedSilentlyStopsTheFileButNotTheViews()
    {
        Add(QStringLiteral("before"));
        Drain();
        QFile file(m_pDir->filePath(QStringLiteral("file")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString strBad = m_pDir->filePath(QStringLiteral("file/logs"));
        CSettingManager::Set(c_strLogDir, strBad);
        QSignalSpy spy(m_pModel, &CLogModel::signal_NewMessage);
        Add(QStringLiteral("lost"));
        Drain();
        QVERIFY(!m_pModel->OpenLogFileCurrentDate(strBad));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).value<SLogMessage>().strMessage, QStringLiteral("lost"));
        QCOMPARE(ReadLines(FileOf(m_pDir->path())), QStringList({Line(QStringLiteral("before")), QString()}));
    }

    void aFileThatCannotBeOpenedLosesTheMessageSilently()
    {
        QVERIFY(QDir().mkpath(FileOf(m_pDir->path())));
        QVERIFY(!m_pModel->OpenLogFileCurrentDate(m_pDir->path()));
        Add(QStringLiteral("lost"));
        Drain();
    }

    void anEmptyFolderIsRefused()
    {
        QVERIFY(!m_pModel->OpenLogFileCurrentDate(QString()));
        QVERIFY(!m_pModel->OpenLogFileCurrentDate(QStringLiteral("")));
    }

    void anotherFolderTakesEffectWithTheNextLine()
    {
        Add(QStringLiteral("one"));
        Add(QStringLiteral("two"));
        m_pModel->slot_OnTimer();
        const QString strOther = m_pDir->filePath(QStringLiteral("other"));
        CSettingManager::Set(c_strLogDir, strOther);
        m_pModel->slot_OnTimer();
        QCOMPARE(ReadLines(FileOf(m_pDir->path())), QStringList({Line(QStringLiteral("one")), QString()}));
        QCOMPARE(ReadLines(FileOf(strOther)), QStringList({Line(QStringLiteral("two")), QString()}));
    }

    void aFileOfTheDayThatIsDeletedWhileOpenIsRecreatedByTheNextMessage()
    {
        Add(QStringLiteral("one"));
        Drain();
        QVERIFY(QFile::remove(FileOf(m_pDir->path())));
        Add(QStringLiteral("two"));
        Drain();
        QCOMPARE(ReadLines(FileOf(m_pDir->path())), QStringList({Line(QStringLiteral("two")), QString()}));
    }

    void aFolderThatIsDeletedWhileItsFileIsOpenIsRecreatedByTheNextMessage()
    {
        Add(QStringLiteral("one"));
        Drain();
        QVERIFY(QDir(m_pDir->path()).removeRecursively());
        Add(QStringLiteral("two"));
        Drain();
        QCOMPARE(ReadLines(FileOf(m_pDir->path())), QStringList({Line(QStringLiteral("two")), QString()}));
    }

    void aFolderReplacedByAFileStopsTheFileButNotTheViewsUntilItIsAFolderAgain()
    {
        const QString strDir = m_pDir->filePath(QStringLiteral("logs"));
        CSettingManager::Set(c_strLogDir, strDir);
        Add(QStringLiteral("one"));
        Drain();
        QVERIFY(QDir(strDir).removeRecursively());
        QFile file(strDir);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no folder");
        file.close();

        QSignalSpy spy(m_pModel, &CLogModel::signal_NewMessage);
        Add(QStringLiteral("lost"));
        Drain();
        QCOMPARE(spy.count(), 1);
        QCOMPARE(ReadLines(strDir), QStringList{QStringLiteral("no folder")});

        QVERIFY(file.remove());
        Add(QStringLiteral("two"));
        Drain();
        QCOMPARE(ReadLines(FileOf(strDir)), QStringList({Line(QStringLiteral("two")), QString()}));
    }

    void aLineLongerThanEveryBufferIsWrittenWhole()
    {
        const QString strText(100000, QLatin1Char('x'));
        Add(strText);
        Drain();
        QCOMPARE(ReadLines(FileOf(m_pDir->path())), QStringList({Line(strText), QString()}));
    }

    void twoMessagesOnEitherSideOfMidnightGoToTwoFiles()
    {
        SetLocalTime(QTime(23, 59, 55));
        const QDate dateBefore = QDate::currentDate();
        QCOMPARE(QTime::currentTime().hour(), 23);
        CLogger::Write(NORMAL, "before");
        Drain();
        QTRY_VERIFY_WITH_TIMEOUT(QDate::currentDate() != dateBefore, 30000);
        CLogger::Write(NORMAL, "after");
        Drain();

        const QStringList linesBefore = ReadLines(FileOf(m_pDir->path(), dateBefore));
        const QStringList linesAfter = ReadLines(FileOf(m_pDir->path(), dateBefore.addDays(1)));
        QCOMPARE(linesBefore.size(), 2);
        QVERIFY2(linesBefore.at(0).startsWith(QStringLiteral("[NORMAL][") + dateBefore.toString(Qt::ISODate) +
                                              QStringLiteral(" 23:59:5")),
                 qPrintable(linesBefore.at(0)));
        QVERIFY(linesBefore.at(0).endsWith(QStringLiteral("] before")));
        QCOMPARE(linesAfter.size(), 2);
        QVERIFY2(linesAfter.at(0).startsWith(QStringLiteral("[NORMAL][") +
                                             dateBefore.addDays(1).toString(Qt::ISODate) +
                                             QStringLiteral(" 00:00:0")),
                 qPrintable(linesAfter.at(0)));
        QVERIFY(linesAfter.at(0).endsWith(QStringLiteral("] after")));
    }
};

VANTOR_TEST_MAIN(tst_CLogModel)
#include "tst_CLogModel.moc"
