// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/center/CCenterModel.h>

#include <QApplication>
#include <limits>

class tst_CCenterModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itStartsWithOneCell()
    {
        const CCenterModel model;
        QCOMPARE(model.GetColumn(), 1);
        QCOMPARE(model.GetRow(), 1);
    }

    void theFirstNumberIsTheColumnCount()
    {
        CCenterModel model;
        model.ChangeSize(2, 1);
        QCOMPARE(model.GetColumn(), 2);
        QCOMPARE(model.GetRow(), 1);
    }

    void aChangeIsStoredThenLoggedAndAnnouncedOnce()
    {
        CCenterModel model;
        LogRecorder log;
        int nColumnSeen = 0;
        int nSignals = 0;
        connect(&model, &CCenterModel::signal_ChangedSize, this, [&] {
            ++nSignals;
            nColumnSeen = model.GetColumn();
        });
        model.ChangeSize(2, 1);
        QCOMPARE(nSignals, 1);
        QCOMPARE(nColumnSeen, 2);
        QCOMPARE(log.Take(), QStringList(QStringLiteral("0:ChangeSize(2, 1)")));
    }

    void anEqualSizeChangesNothingAndSaysNothing()
    {
        CCenterModel model;
        LogRecorder log;
        const QSignalSpy spy(&model, &CCenterModel::signal_ChangedSize);
        model.ChangeSize(1, 1);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(log.Take(), QStringList());
        model.ChangeSize(3, 2);
        model.ChangeSize(3, 2);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(model.GetColumn(), 3);
        QCOMPARE(model.GetRow(), 2);
    }

    void oneDifferentNumberIsAChange()
    {
        CCenterModel model;
        const QSignalSpy spy(&model, &CCenterModel::signal_ChangedSize);
        model.ChangeSize(1, 2);
        model.ChangeSize(2, 2);
        QCOMPARE(spy.count(), 2);
    }

    void anyValuesAreStored()
    {
        CCenterModel model;
        constexpr int kHuge = std::numeric_limits<int>::max();
        model.ChangeSize(-3, kHuge);
        QCOMPARE(model.GetColumn(), -3);
        QCOMPARE(model.GetRow(), kHuge);
    }
};

VANTOR_TEST_MAIN(tst_CCenterModel)
#include "tst_CCenterModel.moc"
