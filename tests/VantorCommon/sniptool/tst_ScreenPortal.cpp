// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/sniptool/ScreenPortal_p.h>

#include "tests/support/PrivateBus.h"
#include "tests/support/ScreenshotPortal.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrl>

using Vantor::Algorithms::CImage;

class tst_ScreenPortal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(!CScreenPortal::IsNeeded()); // this display can be seen
        QVERIFY(QDir().mkpath(m_strTemporary));
        qputenv("TMPDIR", m_strTemporary.toLocal8Bit());
    }
    void init()
    {
        m_pPortal = std::make_unique<CScreenPortal>(nullptr);
        m_vctTaken.clear();
        m_lstFailed.clear();
        connect(m_pPortal.get(), &CScreenPortal::signal_Taken, this,
                [this](const auto& pImage) { m_vctTaken.push_back(pImage); });
        connect(m_pPortal.get(), &CScreenPortal::signal_Failed, this,
                [this](const QString& strReason) { m_lstFailed << strReason; });
    }
    void cleanup()
    {
        CJobs::Get().Finish(m_pPortal.get());
        m_pPortal.reset();
    }

    void thePictureArrivesAndItsTemporaryFileGoes()
    {
        CScreenshotPortal desktop;
        const QString strFile = Give(desktop, m_strTemporary + QStringLiteral("/a b#%.png")); // escaped
        m_pPortal->Ask();
        QTRY_COMPARE(m_vctTaken.size(), std::size_t(1));
        QCOMPARE(m_vctTaken.front()->GetWidth(), 7);
        QCOMPARE(m_vctTaken.front()->GetHeight(), 5);
        QVERIFY(!QFile::exists(strFile));
        QCOMPARE(desktop.strParent, QStringLiteral("wayland:"));
        QVERIFY(desktop.mapOptions.value(QStringLiteral("interactive")).toBool());
        m_pPortal->Ask(); // the file is no longer there
        QTRY_COMPARE(m_lstFailed, QStringList{QStringLiteral("the desktop's picture cannot be read")});
        QCOMPARE(desktop.nAsked, 2);
    }

    void aPictureThatTheDesktopKeepsStays()
    {
        CScreenshotPortal desktop;
        const QString strFile = Give(desktop, m_folder.filePath(QStringLiteral("kept.png")));
        m_pPortal->Ask();
        QTRY_COMPARE(m_vctTaken.size(), std::size_t(1));
        QVERIFY(QFile::exists(strFile));
    }

    void aDesktopThatNamesTheQuestionItselfIsHeard()
    {
        CScreenshotPortal desktop;
        desktop.strRequest = QStringLiteral("/org/freedesktop/portal/desktop/request/old/1");
        Give(desktop, m_folder.filePath(QStringLiteral("old.png")));
        m_pPortal->Ask();
        QTRY_COMPARE(desktop.nAsked, 1);
        QTRY_VERIFY((desktop.Respond(desktop.strRequest), QTest::qWait(10), m_vctTaken.size() == 1));
    }

    void whoCancelsGetsNothingAndMayAskAgain()
    {
        CScreenshotPortal desktop;
        desktop.nResponse = 1;
        for (int i = 1; i <= 2; ++i) {
            m_pPortal->Ask();
            QTRY_COMPARE(desktop.nAsked, i);
            QTRY_VERIFY((m_pPortal->Ask(), QTest::qWait(1), desktop.nAsked > i)); // answered
            desktop.nAsked = i;
        }
        QVERIFY(m_vctTaken.empty());
        QVERIFY(m_lstFailed.isEmpty());
    }

    void oneQuestionAtATime()
    {
        CScreenshotPortal desktop;
        desktop.bSilent = true;
        m_pPortal->Ask();
        m_pPortal->Ask();
        QTRY_COMPARE(desktop.nAsked, 1);
        QTest::qWait(50);
        QCOMPARE(desktop.nAsked, 1);
    }

    void refusalsAndStrangeAnswersAreTold_data()
    {
        QTest::addColumn<uint>("nResponse");
        QTest::addColumn<QString>("strAddress");
        QTest::newRow("refused") << 2U << QString();
        QTest::newRow("no address") << 0U << QString();
        QTest::newRow("from the network") << 0U << QStringLiteral("http://localhost/a.png");
    }
    void refusalsAndStrangeAnswersAreTold()
    {
        QFETCH(const uint, nResponse);
        QFETCH(const QString, strAddress);
        CScreenshotPortal desktop;
        desktop.nResponse = nResponse;
        desktop.mapResults[QStringLiteral("uri")] = strAddress;
        m_pPortal->Ask();
        QTRY_COMPARE(m_lstFailed, QStringList{QStringLiteral("the desktop gives no picture")});
        QVERIFY(m_vctTaken.empty());
    }

    void withoutAPortalTheReasonSaysSo()
    {
        m_pPortal->Ask();
        QTRY_COMPARE(m_lstFailed.size(), 1);
        QVERIFY2(m_lstFailed.front().startsWith(QStringLiteral("the desktop offers no screenshots (")),
                 qPrintable(m_lstFailed.front()));
    }

private:
    /// Makes the file that the desktop answers with.
    static QString Give(CScreenshotPortal& desktop, const QString& strFile)
    {
        QImage picture(7, 5, QImage::Format_RGB32);
        picture.fill(Qt::green);
        picture.save(strFile);
        desktop.mapResults[QStringLiteral("uri")] =
            QString::fromLatin1(QUrl::fromLocalFile(strFile).toEncoded());
        return strFile;
    }

    const QTemporaryDir m_folder;
    const QString m_strTemporary = m_folder.filePath(QStringLiteral("tmp"));
    std::unique_ptr<CScreenPortal> m_pPortal;
    std::vector<std::shared_ptr<CImage>> m_vctTaken;
    QStringList m_lstFailed;
};

int main(int argc, char* argv[])
{
    const CPrivateBus bus;
    const QApplication app(argc, argv);
    tst_ScreenPortal test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_ScreenPortal.moc"
