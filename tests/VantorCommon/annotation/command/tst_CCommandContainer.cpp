// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/RecordingCommand.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/command/CCommandContainer.h>

#include <QApplication>
#include <thread>

class tst_CCommandContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_lines.clear(); }

    void pushingRecordsWithoutExecuting()
    {
        CCommandContainer container;
        container.PushUndo(Command("a"));
        QVERIFY(m_lines.isEmpty());
    }

    void undoTakesTheNewestAndRedoTheLastUndone()
    {
        CCommandContainer container;
        container.PushUndo(Command("a"));
        container.PushUndo(Command("b"));
        container.Undo();
        container.Undo();
        container.Redo();
        container.Redo();
        container.Undo();
        QCOMPARE(m_lines, Lines("undo b,undo a,exec a,exec b,undo b"));
    }

    void emptyHistoriesDoNothing()
    {
        CCommandContainer container;
        container.Undo();
        container.Redo();
        container.PushUndo(Command("a"));
        container.Redo();
        QVERIFY(m_lines.isEmpty());
        container.Undo();
        container.Undo();
        QCOMPARE(m_lines, Lines("undo a"));
    }

    void deliberatelyANewStepLeavesWhatCouldBeRedone()
    {
        CCommandContainer container;
        container.PushUndo(Command("a"));
        container.Undo();
        container.PushUndo(Command("b"));
        container.Redo();
        QCOMPARE(m_lines, Lines("undo a,exec a"));
        // The redone step stands on top of the new one.
        m_lines.clear();
        container.Undo();
        container.Undo();
        QCOMPARE(m_lines, Lines("undo a,undo b"));
    }

    void aNullCommandIsTakenOffAndNothingElseHappens()
    {
        CCommandContainer container;
        container.PushUndo(Command("a"));
        container.PushUndo(nullptr);
        container.Undo();
        container.Redo();
        QVERIFY(m_lines.isEmpty());
        container.Undo();
        QCOMPARE(m_lines, Lines("undo a"));
    }

    void aCommandMayPushFurtherOnesWhileItRuns()
    {
        CCommandContainer container;
        container.PushUndo(new CRecordingCommand(m_lines, "a", [&] { container.PushUndo(Command("b")); }));
        container.Undo();
        container.Undo();
        QCOMPARE(m_lines, Lines("undo a,undo b"));
    }

    void aCommandHasMovedToTheOtherHistoryBeforeItRuns()
    {
        CCommandContainer container;
        bool bNested = false;
        container.PushUndo(new CRecordingCommand(m_lines, "a", [&] {
            if (!std::exchange(bNested, true))
                container.Redo();
        }));
        container.Undo();
        QCOMPARE(m_lines, Lines("undo a,exec a"));
    }

    void nothingIsDroppedBeforeTheEndHoweverDeepTheHistoryIs()
    {
        constexpr int kDepth = 5000;
        {
            CCommandContainer container;
            for (int i = 0; i < kDepth; ++i)
                container.PushUndo(Command("a"));
            for (int i = 0; i < kDepth / 2; ++i)
                container.Undo();
            QCOMPARE(m_lines.count(QStringLiteral("delete a")), 0);
        }
        QCOMPARE(m_lines.count(QStringLiteral("undo a")), kDepth / 2);
        QCOMPARE(m_lines.count(QStringLiteral("delete a")), kDepth);
    }

    void theDestructorDeletesTheUndoHistoryFirst()
    {
        {
            CCommandContainer container;
            container.PushUndo(Command("a"));
            container.PushUndo(Command("b"));
            container.PushUndo(nullptr);
            container.PushUndo(Command("c"));
            container.Undo();
            m_lines.clear();
        }
        QCOMPARE(m_lines.size(), 3);
        QCOMPARE(m_lines.last(), QStringLiteral("delete c"));
    }

    void anotherThreadMayPushWhileStepsAreTakenBack()
    {
        constexpr int kPushes = 2000;
        struct CQuiet : CCommand {
            explicit CQuiet(int& nUndone) : m_nUndone(nUndone) {}
            void exec() override {}
            void undo() override { ++m_nUndone; }
            int& m_nUndone;
        };
        int nUndone = 0;
        CCommandContainer container;
        std::thread pusher([&] {
            for (int i = 0; i < kPushes; ++i)
                container.PushUndo(new CQuiet(nUndone));
        });
        for (int i = 0; i < kPushes; ++i)
            container.Undo();
        pusher.join();
        for (int i = 0; i < kPushes; ++i)
            container.Undo();
        QCOMPARE(nUndone, kPushes);
    }

private:
    CCommand* Command(const char* szName) { return new CRecordingCommand(m_lines, szName); }

    QStringList m_lines;
};

VANTOR_TEST_MAIN(tst_CCommandContainer)
#include "tst_CCommandContainer.moc"
