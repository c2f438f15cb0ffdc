// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/dock/CStatusBarModel.h>
#include <VantorCommon/shell/dock/CStatusBarView.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QProgressBar>
#include <memory>

class tst_CStatusBarView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBarFillsAHorizontalLayoutWithoutMargins()
    {
        CStatusBarModel model;
        QWidget parent;
        const auto* pView = new CStatusBarView(&model, &parent);
        QCOMPARE(pView->parentWidget(), &parent);
        const auto* pLayout = qobject_cast<QHBoxLayout*>(pView->layout());
        QVERIFY(pLayout);
        QCOMPARE(pLayout->spacing(), 0);
        QCOMPARE(pLayout->contentsMargins(), QMargins());
        QCOMPARE(pLayout->count(), 1);
        QVERIFY(qobject_cast<QProgressBar*>(pLayout->itemAt(0)->widget()));
    }

    void theBarFollowsTheModel()
    {
        CStatusBarModel model;
        const CStatusBarView view(&model);
        const auto* pBar = view.findChild<QProgressBar*>();
        model.SetMaxRange(40);
        QCOMPARE(pBar->minimum(), 0);
        QCOMPARE(pBar->maximum(), 40);
        model.SetValue(17);
        QCOMPARE(pBar->value(), 17);
    }

    void theBarDeliberatelyDoesNotShowTheStartingValues()
    {
        CStatusBarModel model;
        model.SetMaxRange(40);
        model.SetValue(17);
        const CStatusBarView view(&model);
        const auto* pBar = view.findChild<QProgressBar*>();
        QCOMPARE(pBar->value(), -1);
        QCOMPARE(pBar->maximum(), 100);
        model.SetMaxRange(50);
        QCOMPARE(pBar->maximum(), 50);
        QCOMPARE(pBar->value(), -1);
        model.SetValue(18);
        QCOMPARE(pBar->value(), 18);
    }

    void withoutAModelTheSlotsDoNothing()
    {
        auto pModel = std::make_unique<CStatusBarModel>();
        CStatusBarView none(nullptr);
        CStatusBarView orphan(pModel.get());
        pModel.reset();
        for (CStatusBarView* pView : {&none, &orphan}) {
            pView->slot_ChangeMaxRange();
            pView->slot_ChangeValue();
            const auto* pBar = pView->findChild<QProgressBar*>();
            QCOMPARE(pBar->maximum(), 100);
            QCOMPARE(pBar->value(), -1);
        }
    }

    void withoutABarTheSlotsDoNothing()
    {
        CStatusBarModel model;
        const CStatusBarView view(&model);
        delete view.findChild<QProgressBar*>();
        model.SetMaxRange(40);
        model.SetValue(17);
        QVERIFY(!view.findChild<QProgressBar*>());
    }
};

VANTOR_TEST_MAIN(tst_CStatusBarView)
#include "tst_CStatusBarView.moc"
