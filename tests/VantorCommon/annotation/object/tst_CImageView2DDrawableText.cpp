// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>

#include <QApplication>

class tst_CImageView2DDrawableText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsOfANewText()
    {
        const CImageView2DDrawableText text;
        QCOMPARE(text.GetType(), EImageView2DDrawbleObjectType_Text);
        QCOMPARE(text.GetText(), QString());
        QCOMPARE(text.GetPosition(), QPointF(0, 0));
        QCOMPARE(text.GetName(), QStringLiteral("Object_") + QString::number(text.GetUID()));
    }

    void aTextCannotBeMovedResizedOrHit()
    {
        CImageView2DDrawableText text;
        QSignalSpy spy(&text, &CImageView2DDrawableText::signal_ChangeDrawableObjectProperty);
        QPointF handle(7, 7);
        text.MoveTopLeftTo(QPointF(5, 5));
        text.MoveResizePoint(QPointF(0, 0), QPointF(5, 5));
        QVERIFY(!text.FindResizePoint(1e9, QPointF(0, 0), handle, 0.0));
        QCOMPARE(handle, QPointF(7, 7));
        QCOMPARE(text.GetBoundary(), QRectF(0, 0, 0, 0));
        QVERIFY(!text.GetBoundary().contains(QPointF(0, 0)));
        QCOMPARE(text.GetPosition(), QPointF(0, 0));
        QCOMPARE(spy.count(), 0);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DDrawableText)
#include "tst_CImageView2DDrawableText.moc"
