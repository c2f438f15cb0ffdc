// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>

#include <QApplication>
#include <QMetaEnum>
#include <type_traits>

class tst_CImageView2DToolModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewModelSelectsAndHasViewTypeZero()
    {
        const CImageView2DToolModel model;
        QCOMPARE(model.GetViewMode(), EImageView2DMode_Selecting);
        QCOMPARE(int(model.GetViewType()), 0);
    }

    void theValueNamesOfTheModesArePrintable()
    {
        const char* const arrNames[] = {
            "EImageView2DMode_Selecting",         "EImageView2DMode_Panning",
            "EImageView2DMode_Drawing_Rectanlge", "EImageView2DMode_Drawing_Ellipse",
            "EImageView2DMode_Drawing_Circle",    "EImageView2DMode_Drawing_Polygon",
            "EImageView2DMode_Drawing_Line"};
        const QMetaEnum meta = QMetaEnum::fromType<EImageView2DMode>();
        QCOMPARE(meta.keyCount(), 7);
        for (int i = 0; i < 7; ++i)
            QCOMPARE(QByteArray(meta.valueToKey(i)), QByteArray(arrNames[i]));
        QVERIFY((std::is_same_v<std::underlying_type_t<EImageView2DMode>, int>));
    }

    void everyEnumeratorIsReachableAtGlobalScope()
    {
        QCOMPARE(int(::EImageView2DMode_Selecting), 0);
        QCOMPARE(int(::EImageView2DMode_Panning), 1);
        QCOMPARE(int(::EImageView2DMode_Drawing_Rectanlge), 2);
        QCOMPARE(int(::EImageView2DMode_Drawing_Ellipse), 3);
        QCOMPARE(int(::EImageView2DMode_Drawing_Circle), 4);
        QCOMPARE(int(::EImageView2DMode_Drawing_Polygon), 5);
        QCOMPARE(int(::EImageView2DMode_Drawing_Line), 6);
    }

    void aModeIsAnnouncedOnceAndTheCurrentOneNotAtAll()
    {
        CImageView2DToolModel model;
        QSignalSpy mode(&model, &CImageView2DToolModel::signal_ChangeViewMode);
        QSignalSpy type(&model, &CImageView2DToolModel::signal_ChangeViewType);
        LogRecorder log;
        model.SetViewMode(EImageView2DMode_Selecting);
        QCOMPARE(mode.count(), 0);
        model.SetViewMode(EImageView2DMode_Drawing_Line);
        model.SetViewMode(EImageView2DMode_Drawing_Line);
        QCOMPARE(mode.count(), 1);
        QVERIFY(mode.first().isEmpty());
        QCOMPARE(model.GetViewMode(), EImageView2DMode_Drawing_Line);
        QCOMPARE(type.count(), 0);
        QVERIFY(log.Take().isEmpty());
    }

    void theNewModeIsStoredWhenItIsAnnounced()
    {
        CImageView2DToolModel model;
        int nSeen = -1;
        connect(&model, &CImageView2DToolModel::signal_ChangeViewMode, this,
                [&] { nSeen = model.GetViewMode(); });
        model.SetViewMode(EImageView2DMode_Panning);
        QCOMPARE(nSeen, 1);
    }

    void aViewTypeOtherThanZeroOrOneIsStoredAndAnnounced()
    {
        CImageView2DToolModel model;
        QSignalSpy mode(&model, &CImageView2DToolModel::signal_ChangeViewMode);
        QSignalSpy type(&model, &CImageView2DToolModel::signal_ChangeViewType);
        model.SetViewType(static_cast<EImageView2DType>(0));
        QCOMPARE(type.count(), 0);
        for (int nType : {1, 7, -1}) {
            model.SetViewType(static_cast<EImageView2DType>(nType));
            QCOMPARE(int(model.GetViewType()), nType);
        }
        QCOMPARE(type.count(), 3);
        QCOMPARE(mode.count(), 0);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DToolModel)
#include "tst_CImageView2DToolModel.moc"
