// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/RecordingCommand.h"
#include "tests/support/TestMain.h"

#include <QApplication>

class tst_CCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void redoExecutesAgain()
    {
        QStringList lines;
        CRecordingCommand command(lines, "a");
        command.redo();
        QCOMPARE(lines, Lines("exec a"));
    }

    void itIsDeletedThroughItsBase()
    {
        QStringList lines;
        CCommand* pCommand = new CRecordingCommand(lines, "a");
        delete pCommand;
        QCOMPARE(lines, Lines("delete a"));
    }
};

VANTOR_TEST_MAIN(tst_CCommand)
#include "tst_CCommand.moc"
