// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <Vantor/image/CImage.h>

#include <QApplication>
#include <QTemporaryDir>
#include <string>
#include <thread>
#include <vector>

class tst_CLogger : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    CLogModel* m_pModel = CLogModel::GetInstance();

    /// Everything that is queued, in order.
    std::vector<SLogMessage> Drain()
    {
        std::vector<SLogMessage> vctMessages;
        const auto connection =
            connect(m_pModel, &CLogModel::signal_NewMessage, this,
                    [&](const SLogMessage& sMessage) { vctMessages.push_back(sMessage); });
        while (!m_pModel->IsEmpty())
            m_pModel->slot_OnTimer();
        disconnect(connection);
        return vctMessages;
    }

    QString OnlyText()
    {
        const auto vctMessages = Drain();
        return vctMessages.size() == 1 ? vctMessages.front().strMessage : QStringLiteral("not one message");
    }

private Q_SLOTS:
    void initTestCase() { CSettingManager::Set(QStringLiteral("GENERAL_LOG_DIR"), m_dir.path()); }
    void cleanup() { QVERIFY(m_pModel->IsEmpty()); }

    void deliberateTheLevelsAreNumberedWithDebugSecond()
    {
        QCOMPARE(int(NORMAL), 0);
        QCOMPARE(int(DEBUG), 1);
        QCOMPARE(int(WARNING), 2);
        QCOMPARE(int(ERROR), 3);
        QCOMPARE(sizeof(ELogLevel), std::size_t(4));
    }

    void theTextIsFormattedAsPrintfDoesIt()
    {
        CLogger::Write(WARNING, "%s: %d of %5.2f%%", "file", 3, 12.345);
        const auto vctMessages = Drain();
        QCOMPARE(vctMessages.size(), std::size_t(1));
        QCOMPARE(vctMessages.front().strMessage, QStringLiteral("file: 3 of 12.35%"));
        QCOMPARE(vctMessages.front().eLevel, WARNING);
    }

    void dataNeverServesAsAFormat()
    {
        CLogger::Write(NORMAL, "%s", "%s%n%d %1 100%");
        QCOMPARE(OnlyText(), QStringLiteral("%s%n%d %1 100%"));
    }

    void whatACodecSaysIsALineOfTheLowestLevel()
    {
        Vantor::Algorithms::CImage image;
        const QString path = TestDataPath(QStringLiteral("broken/peacock.default.truncated.jpeg"));
        QCOMPARE(image.Load(path.toStdWString()), 0);
        const auto vctMessages = Drain();
        QCOMPARE(vctMessages.size(), std::size_t(1));
        QCOMPARE(vctMessages.front().eLevel, NORMAL);
        QVERIFY(vctMessages.front().strMessage.startsWith(QStringLiteral("libjpeg: ")));
    }

    void theTextIsReadAsUtf8()
    {
        CLogger::Write(NORMAL, "%s", u8"\u00e9\u8a9e\U0001F30D");
        QCOMPARE(OnlyText(), QString::fromUtf8(u8"\u00e9\u8a9e\U0001F30D"));
    }

    void anEmptyTextIsAMessage()
    {
        CLogger::Write(NORMAL, "%s", "");
        QCOMPARE(OnlyText(), QString());
    }

    void aMessageOfMoreThan1023BytesIsStoredCutToItsFirst1023Bytes()
    {
        std::string strText(1022, 'a');
        strText += "bcd";
        CLogger::Write(NORMAL, "%s", strText.c_str());
        QCOMPARE(OnlyText(), QString(1022, QLatin1Char('a')) + QLatin1Char('b'));
        strText.resize(1023);
        CLogger::Write(NORMAL, "%s", strText.c_str());
        QCOMPARE(OnlyText(), QString(1022, QLatin1Char('a')) + QLatin1Char('b'));
        CLogger::Write(NORMAL, "%s", std::string(1000000, 'x').c_str());
        QCOMPARE(OnlyText(), QString(1023, QLatin1Char('x')));
    }

    void aTextCutInsideACharacterEndsWithOneReplacementCharacter_data()
    {
        QTest::addColumn<QByteArray>("character");
        QTest::addColumn<int>("nKept");
        QTest::newRow("1 of 2 bytes") << QByteArray("\xc3\xa9") << 1;
        QTest::newRow("1 of 3 bytes") << QByteArray("\xe8\xaa\x9e") << 1;
        QTest::newRow("2 of 3 bytes") << QByteArray("\xe8\xaa\x9e") << 2;
        QTest::newRow("1 of 4 bytes") << QByteArray("\xf0\x9f\x8c\x8d") << 1;
        QTest::newRow("2 of 4 bytes") << QByteArray("\xf0\x9f\x8c\x8d") << 2;
        QTest::newRow("3 of 4 bytes") << QByteArray("\xf0\x9f\x8c\x8d") << 3;
    }

    void aTextCutInsideACharacterEndsWithOneReplacementCharacter()
    {
        QFETCH(QByteArray, character);
        QFETCH(int, nKept);
        const QByteArray before(1023 - nKept, 'a');
        CLogger::Write(NORMAL, "%s", (before + character + "tail").constData());
        QCOMPARE(OnlyText(), QString::fromLatin1(before) + QChar(QChar::ReplacementCharacter));
    }

    void aTextWithoutAnyBeginningOfACharacterIsCutToo()
    {
        CLogger::Write(NORMAL, "%s", QByteArray(1100, '\x80').constData());
        QCOMPARE(OnlyText(), QString(1023, QChar(QChar::ReplacementCharacter)));
    }

    void withoutAFormatNothingIsWritten()
    {
        void (*const pWrite)(ELogLevel, const char*, ...) = &CLogger::Write; // past the compiler's own check
        pWrite(NORMAL, nullptr);
        QVERIFY(m_pModel->IsEmpty());
    }

    void aTextThatCannotBeFormattedIsReplacedByItsFormat()
    {
        const wchar_t invalid[] = {wchar_t(0xD800), 0};
        CLogger::Write(NORMAL, "Cannot open %ls", invalid);
        QCOMPARE(OnlyText(), QStringLiteral("Cannot open %ls"));
    }

    void theTimeIsTheLocalTimeOfTheCallNotOfTheWriting()
    {
        const QDateTime dtBefore = QDateTime::currentDateTime();
        CLogger::Write(NORMAL, "now");
        const QDateTime dtAfter = QDateTime::currentDateTime();
        while (QDateTime::currentDateTime() <= dtAfter) {
        }
        const auto vctMessages = Drain();
        QCOMPARE(vctMessages.size(), std::size_t(1));
        const QDateTime& dtTime = vctMessages.front().dtTime;
        QCOMPARE(dtTime.timeSpec(), Qt::LocalTime);
        QVERIFY(dtBefore <= dtTime);
        QVERIFY(dtTime <= dtAfter);
    }

    void eightThreadsLoseNothingAndKeepTheirOrder()
    {
        constexpr int nPerThread = 500;
        std::vector<std::thread> vctThreads;
        for (int nThread = 0; nThread < 8; ++nThread)
            vctThreads.emplace_back([nThread] {
                for (int i = 0; i < nPerThread; ++i)
                    CLogger::Write(NORMAL, "%d %d", nThread, i);
            });
        for (std::thread& thread : vctThreads)
            thread.join();
        std::vector<int> vctNext(8, 0);
        for (const SLogMessage& sMessage : Drain()) {
            const QStringList parts = sMessage.strMessage.split(QLatin1Char(' '));
            QCOMPARE(parts.at(1).toInt(), vctNext.at(parts.at(0).toUInt())++);
        }
        QCOMPARE(vctNext, std::vector<int>(8, nPerThread));
    }
};

VANTOR_TEST_MAIN(tst_CLogger)
#include "tst_CLogger.moc"
