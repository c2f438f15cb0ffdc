// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CJobBar.h"
#include "tests/support/TestMain.h"

#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QThreadPool>
#include <QToolButton>
#include <QVBoxLayout>

using Vantor::CProgress;

namespace
{
/// Work until it is cancelled, at 40 %.
CJob::Finish WorkOn(CProgress& progress)
{
    progress.SetDone(0.4);
    while (!progress.IsCancelled())
        QThread::yieldCurrentThread();
    return {};
}

CJobs::JobPtr Start(QObject* pReceiver, const char* pTitle, const CJob::Work& work = WorkOn)
{
    SJob sJob;
    sJob.strTitle = QString::fromLatin1(pTitle);
    return CJobs::Get().Start(pReceiver, sJob, work);
}

QStringList Names(const QWidget& bar)
{
    QStringList lstNames;
    for (const auto* pBar : bar.findChildren<QProgressBar*>())
        lstNames << pBar->accessibleName();
    return lstNames;
}
} // namespace

class tst_CJobBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        for (const auto& pJob : CJobs::Get().GetJobs())
            CJobs::Get().Cancel(pJob);
        QTRY_VERIFY(CJobs::Get().GetJobs().empty());
    }

    void whatRunsIsListedWithItsProgressUntilItEnds()
    {
        CJobBar bar(nullptr);
        bar.show();
        QObject receiver;
        const auto pJob = Start(&receiver, "Save a.png");
        QVERIFY(Names(bar).isEmpty());
        QTRY_COMPARE(Names(bar), QStringList{QStringLiteral("Save a.png")});
        auto* pBar = bar.findChild<QProgressBar*>();
        QTRY_VERIFY(pBar->isVisible());
        QTRY_COMPARE(pBar->value() * 10, pBar->maximum() * 4);
        CJobs::Get().Cancel(pJob);
        QTRY_VERIFY(Names(bar).isEmpty());
    }

    void whatEndsAtOnceIsNotListed()
    {
        CJobBar bar(nullptr);
        bar.show();
        QObject receiver;
        Start(&receiver, "Quick", [](CProgress&) { return CJob::Finish(); });
        CJobs::Get().Finish(&receiver);
        QCoreApplication::processEvents();
        QVERIFY(Names(bar).isEmpty());
    }

    void theButtonCancels()
    {
        CJobBar bar(nullptr);
        bar.show();
        QObject receiver;
        const auto pJob = Start(&receiver, "Rotate");
        QTRY_VERIFY(bar.findChild<QToolButton*>());
        auto* pButton = bar.findChild<QToolButton*>();
        QCOMPARE(pButton->accessibleName(), QStringLiteral("Cancel: Rotate"));
        QCOMPARE(pButton->focusPolicy(), Qt::TabFocus);
        QTest::mouseClick(pButton, Qt::LeftButton);
        QVERIFY(pJob->GetProgress().IsCancelled());
        QTRY_VERIFY(Names(bar).isEmpty());
    }

    void threeAreShownAndTheOthersCounted()
    {
        CJobBar bar(nullptr);
        bar.show();
        QObject receiver;
        for (const char* pTitle : {"1", "2", "3", "4", "5"})
            Start(&receiver, pTitle);
        QTRY_COMPARE(Names(bar).size(), 3);
        const auto lstLabels = bar.findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(lstLabels.size(), 1);
        QTRY_VERIFY(lstLabels.at(0)->isVisible());
        QVERIFY(lstLabels.at(0)->text().contains(QLatin1Char('2')));
        CJobs::Get().Cancel(CJobs::Get().GetJobs().at(0));
        QTRY_COMPARE(Names(bar),
                     (QStringList{QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")}));
    }

    void aTitleIsNoMarkup()
    {
        CJobBar bar(nullptr);
        bar.show();
        QObject receiver;
        Start(&receiver, "<b>x</b>");
        QTRY_VERIFY(bar.findChild<QProgressBar*>());
        QCOMPARE(bar.findChild<QProgressBar*>()->parentWidget()->findChild<QLabel*>()->textFormat(),
                 Qt::PlainText);
    }

    void whatNeedsMoreMemoryThanIsFreeIsAskedFor_data()
    {
        QTest::addColumn<bool>("begin");
        QTest::newRow("begin") << true;
        QTest::newRow("cancel") << false;
    }
    void whatNeedsMoreMemoryThanIsFreeIsAskedFor()
    {
        QFETCH(bool, begin);
        CJobBar bar(nullptr);
        bar.show();
        QObject receiver;
        QString strText;
        QTimer driver;
        connect(&driver, &QTimer::timeout, &driver, [&] {
            auto* pBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!pBox || !strText.isEmpty())
                return;
            strText = pBox->text();
            for (auto* pButton : pBox->buttons())
                if ((pBox->buttonRole(pButton) == QMessageBox::AcceptRole) == begin)
                    return pButton->click();
        });
        driver.start(10);
        SJob sJob;
        sJob.strTitle = QStringLiteral("Open a.png");
        sJob.nMemory = qint64(1) << 50;
        const auto pJob = CJobs::Get().Start(&receiver, sJob, [](CProgress&) { return CJob::Finish(); });
        QCOMPARE(pJob != nullptr, begin);
        QVERIFY(strText.startsWith(QStringLiteral("Open a.png")));
        CJobs::Get().Finish(&receiver);
    }
};

VANTOR_TEST_MAIN(tst_CJobBar)
#include "tst_CJobBar.moc"
