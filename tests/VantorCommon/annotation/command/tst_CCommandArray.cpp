// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/RecordingCommand.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/command/CCommandArray.h>

#include <QApplication>

class tst_CCommandArray : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void membersRunFirstToLastAndAreUndoneLastToFirst()
    {
        QStringList lines;
        CCommandArray array;
        for (const char* szName : {"a", "b", "c"})
            array.addCommand(new CRecordingCommand(lines, szName));
        array.exec();
        QCOMPARE(lines, Lines("exec a,exec b,exec c"));
        lines.clear();
        array.undo();
        QCOMPARE(lines, Lines("undo c,undo b,undo a"));
        lines.clear();
        array.redo();
        QCOMPARE(lines, Lines("exec a,exec b,exec c"));
        lines.clear();
    }

    void theDestructorDeletesEveryMember()
    {
        QStringList lines;
        {
            CCommandArray array;
            array.addCommand(new CRecordingCommand(lines, "a"));
            array.addCommand(new CRecordingCommand(lines, "b"));
        }
        lines.sort();
        QCOMPARE(lines, Lines("delete a,delete b"));
    }

    void anEmptyArrayAndANullMemberDoNothing()
    {
        QStringList lines;
        CCommandArray array;
        array.exec();
        array.undo();
        array.addCommand(nullptr);
        array.addCommand(new CRecordingCommand(lines, "a"));
        array.exec();
        array.undo();
        QCOMPARE(lines, Lines("exec a,undo a"));
        lines.clear();
    }
};

VANTOR_TEST_MAIN(tst_CCommandArray)
#include "tst_CCommandArray.moc"
