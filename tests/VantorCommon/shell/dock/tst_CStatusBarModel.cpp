// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/dock/CStatusBarModel.h>

#include <QApplication>
#include <QSignalSpy>

class tst_CStatusBarModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewModelGoesFromZeroToAHundred()
    {
        const CStatusBarModel model;
        QCOMPARE(model.GetMaxRange(), 100);
        QCOMPARE(model.GetValue(), 0);
    }

    void settingTheMaximumRangeToAHundredOnANewModelEmitsNothing()
    {
        CStatusBarModel model;
        const QSignalSpy spy(&model, &CStatusBarModel::signal_MaxRangeChanged);
        model.SetMaxRange(100);
        QCOMPARE(spy.count(), 0);
    }

    void settingTheValueToZeroOnANewModelEmitsNothing()
    {
        CStatusBarModel model;
        const QSignalSpy spy(&model, &CStatusBarModel::signal_ValueChanged);
        model.SetValue(0);
        QCOMPARE(spy.count(), 0);
    }

    void aChangeIsStoredBeforeItsOwnSignalGoesOut()
    {
        CStatusBarModel model;
        QStringList lstSeen;
        connect(&model, &CStatusBarModel::signal_MaxRangeChanged, &model,
                [&] { lstSeen << QStringLiteral("max %1").arg(model.GetMaxRange()); });
        connect(&model, &CStatusBarModel::signal_ValueChanged, &model,
                [&] { lstSeen << QStringLiteral("value %1").arg(model.GetValue()); });
        model.SetMaxRange(20);
        model.SetValue(-7); // not held against the range
        model.SetValue(-7);
        QCOMPARE(lstSeen.join(QLatin1Char('|')), QStringLiteral("max 20|value -7"));
    }
};

VANTOR_TEST_MAIN(tst_CStatusBarModel)
#include "tst_CStatusBarModel.moc"
