// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/settings/CSettingModel.h>

#include <QApplication>
#include <QSignalSpy>

class tst_CSettingModel : public QObject
{
    Q_OBJECT

private:
    CSettingModel* m_pModel = CSettingModel::GetInstance();

private Q_SLOTS:
    void thereIsOneInstance() { QCOMPARE(CSettingModel::GetInstance(), m_pModel); }

    void anUnknownKeyReadsAsANullVariant()
    {
        QVERIFY(!m_pModel->Get(QStringLiteral("nobody set this")).isValid());
        QVERIFY(m_pModel->Get(QStringLiteral("nobody set this")).isNull());
    }

    void aNewKeyIsStoredAndAnnounced()
    {
        QSignalSpy spy(m_pModel, &CSettingModel::signal_UpdateSettingParameter);
        m_pModel->Set(QStringLiteral("new"), 7);
        QCOMPARE(m_pModel->Get(QStringLiteral("new")), QVariant(7));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("new"));
        QCOMPARE(spy.at(0).at(1).value<QVariant>(), QVariant(7));
    }

    void aReceiverAlreadyReadsTheNewValue()
    {
        QVariant seen;
        const auto connection =
            connect(m_pModel, &CSettingModel::signal_UpdateSettingParameter, this,
                    [&](const QString& strKey, const QVariant&) { seen = m_pModel->Get(strKey); });
        m_pModel->Set(QStringLiteral("read back"), QStringLiteral("value"));
        disconnect(connection);
        QCOMPARE(seen, QVariant(QStringLiteral("value")));
    }

    void settingAKeyToTheValueItAlreadyHasEmitsNothing()
    {
        m_pModel->Set(QStringLiteral("same"), QStringLiteral("a"));
        QSignalSpy spy(m_pModel, &CSettingModel::signal_UpdateSettingParameter);
        m_pModel->Set(QStringLiteral("same"), QStringLiteral("a"));
        QCOMPARE(spy.count(), 0);
        m_pModel->Set(QStringLiteral("same"), QStringLiteral("b"));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(m_pModel->Get(QStringLiteral("same")), QVariant(QStringLiteral("b")));
    }

    void deliberateAValueThatOnlyConvertsToTheStoredOneChangesNothing()
    {
        m_pModel->Set(QStringLiteral("converts"), QStringLiteral("5"));
        QSignalSpy spy(m_pModel, &CSettingModel::signal_UpdateSettingParameter);
        m_pModel->Set(QStringLiteral("converts"), 5);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(m_pModel->Get(QStringLiteral("converts")).type(), QVariant::String);
    }

    void aNullValueIsStoredUnderANewKeyAndAnnounced()
    {
        QSignalSpy spy(m_pModel, &CSettingModel::signal_UpdateSettingParameter);
        m_pModel->Set(QStringLiteral("null"), QVariant());
        m_pModel->Set(QStringLiteral("null"), QVariant());
        QCOMPARE(spy.count(), 1);
    }

    void keysDifferByCase()
    {
        m_pModel->Set(QStringLiteral("case"), 1);
        QVERIFY(m_pModel->Get(QStringLiteral("CASE")).isNull());
    }
};

VANTOR_TEST_MAIN(tst_CSettingModel)
#include "tst_CSettingModel.moc"
