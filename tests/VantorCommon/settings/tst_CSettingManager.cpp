// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/settings/CSettingModel.h>

#include <QApplication>
#include <QStandardPaths>
#include <QVariant>

class tst_CSettingManager : public QObject
{
    Q_OBJECT

private:
    const QString m_strKey = QStringLiteral("key");

private Q_SLOTS:
    // First, while the store is as the process finds it.
    void aFreshStoreReturnsTheCallersDefault()
    {
        QCOMPARE(CSettingManager::GetInt(QStringLiteral("GENERAL_PDF_RESOLUTION_X"), 0), 0);
        QCOMPARE(CSettingManager::GetInt(QStringLiteral("GENERAL_PDF_RESOLUTION_X"), 72), 72);
        QCOMPARE(CSettingManager::GetDouble(QStringLiteral("PDF_RESOLUTION_X"), 144.0), 144.0);
        QCOMPARE(CSettingManager::GetString(QStringLiteral("GENERAL_LOG_DIR"), QStringLiteral("here")),
                 QStringLiteral("here"));
    }

    void setReachesTheOneModelAndReturnsTrue()
    {
        QVERIFY(CSettingManager::Set(m_strKey, 3));
        QVERIFY(CSettingManager::Set(m_strKey, 3));
        QCOMPARE(CSettingModel::GetInstance()->Get(m_strKey), QVariant(3));
    }

    void numbersAreReadFromNumbersAndFromTheirText()
    {
        CSettingManager::Set(m_strKey, QStringLiteral("42"));
        QCOMPARE(CSettingManager::GetInt(m_strKey, -1), 42);
        QCOMPARE(CSettingManager::GetDouble(m_strKey, -1.0), 42.0);
        CSettingManager::Set(m_strKey, 2.5);
        QCOMPARE(CSettingManager::GetDouble(m_strKey, -1.0), 2.5);
    }

    void whatDoesNotConvertGivesTheDefault()
    {
        CSettingManager::Set(m_strKey, QStringLiteral("144 dpi"));
        QCOMPARE(CSettingManager::GetInt(m_strKey, -1), -1);
        QCOMPARE(CSettingManager::GetDouble(m_strKey, -1.5), -1.5);
        CSettingManager::Set(m_strKey, QStringLiteral(""));
        QCOMPARE(CSettingManager::GetInt(m_strKey, -1), -1);
    }

    void aNumberOutsideTheRangeOfIntGivesTheDefault()
    {
        for (const QVariant& value : {QVariant(QStringLiteral("2147483648")), QVariant(4000000000U),
                                      QVariant(-2147483649LL), QVariant(1e12)}) {
            CSettingManager::Set(m_strKey, value);
            QCOMPARE(CSettingManager::GetInt(m_strKey, -1), -1);
        }
        CSettingManager::Set(m_strKey, 2147483647);
        QCOMPARE(CSettingManager::GetInt(m_strKey, -1), 2147483647);
        CSettingManager::Set(m_strKey, -2147483647 - 1);
        QCOMPARE(CSettingManager::GetInt(m_strKey, 0), -2147483647 - 1);
    }

    void aNullValueGivesTheDefault()
    {
        CSettingManager::Set(m_strKey, QVariant(QVariant::Int));
        QCOMPARE(CSettingManager::GetInt(m_strKey, -1), -1);
        CSettingManager::Set(m_strKey, QVariant(QVariant::Double));
        QCOMPARE(CSettingManager::GetDouble(m_strKey, -1.5), -1.5);
        CSettingManager::Set(m_strKey, QVariant());
        QCOMPARE(CSettingManager::GetString(m_strKey, QStringLiteral("default")), QStringLiteral("default"));
    }

    void getStringOfAKeyHoldingANumberReturnsItsTextForm()
    {
        CSettingManager::Set(m_strKey, 144);
        QCOMPARE(CSettingManager::GetString(m_strKey, QStringLiteral("default")), QStringLiteral("144"));
        CSettingManager::Set(m_strKey, 0.5);
        QCOMPARE(CSettingManager::GetString(m_strKey, QStringLiteral("default")), QStringLiteral("0.5"));
    }

    void getStringDoesNotCheckTheConversion()
    {
        CSettingManager::Set(m_strKey, QVariantList{1, 2});
        QCOMPARE(CSettingManager::GetString(m_strKey, QStringLiteral("default")), QString());
    }

    void anEmptyTextIsAValue()
    {
        CSettingManager::Set(m_strKey, QStringLiteral(""));
        QCOMPARE(CSettingManager::GetString(m_strKey, QStringLiteral("default")), QString());
    }

    void aFolderIsTheOneThatIsSetOrVantorInTheDocuments()
    {
        const QString strDocuments = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        QCOMPARE(CSettingManager::GetDefaultFolder(), strDocuments + QStringLiteral("/Vantor"));
        QCOMPARE(CSettingManager::GetFolder(CSettingManager::kLogFolder),
                 CSettingManager::GetDefaultFolder());
        CSettingManager::Set(QStringLiteral("GENERAL_LOG_DIR"), QStringLiteral("/logs"));
        QCOMPARE(CSettingManager::GetFolder(CSettingManager::kLogFolder), QStringLiteral("/logs"));
        QCOMPARE(CSettingManager::GetFolder(CSettingManager::kConfigFolder),
                 CSettingManager::GetDefaultFolder());
    }

    void theKeysOfTheLibraryAreThoseInStoredFiles()
    {
        using M = CSettingManager;
        QCOMPARE(QString(M::kConfigFolder), QStringLiteral("GENERAL_PROGRAM_CONFIG_DIR"));
        QCOMPARE(QString(M::kLogFolder), QStringLiteral("GENERAL_LOG_DIR"));
        QCOMPARE(QString(M::kDialogResolutionX), QStringLiteral("GENERAL_PDF_RESOLUTION_X"));
        QCOMPARE(QString(M::kDialogResolutionY), QStringLiteral("GENERAL_PDF_RESOLUTION_Y"));
        QCOMPARE(QString(M::kLoaderResolutionX), QStringLiteral("PDF_RESOLUTION_X"));
        QCOMPARE(QString(M::kLoaderResolutionY), QStringLiteral("PDF_RESOLUTION_Y"));
    }

    void deliberateTheKeysOfTheDialogAreNotThoseOfThePdfLoader()
    {
        CSettingManager::Set(QStringLiteral("GENERAL_PDF_RESOLUTION_X"), 300);
        QCOMPARE(CSettingManager::GetDouble(QStringLiteral("PDF_RESOLUTION_X"), 144.0), 144.0);
    }
};

VANTOR_TEST_MAIN(tst_CSettingManager)
#include "tst_CSettingManager.moc"
