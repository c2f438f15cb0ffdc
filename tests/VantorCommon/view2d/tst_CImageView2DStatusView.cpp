// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/view2d/CImageView2DStatusView.h>

#include <QApplication>

class tst_CImageView2DStatusView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAPlainWidget()
    {
        QWidget parent;
        const auto* pView = new CImageView2DStatusView(&parent);
        QCOMPARE(pView->parentWidget(), &parent);
        QVERIFY(pView->children().isEmpty());
        QVERIFY(!pView->layout());
        QCOMPARE(pView->metaObject()->superClass(), &QWidget::staticMetaObject);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DStatusView)
#include "tst_CImageView2DStatusView.moc"
