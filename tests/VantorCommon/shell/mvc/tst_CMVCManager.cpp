// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/mvc/CBaseCtrl.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>

#include <QApplication>
#include <QMainWindow>
#include <memory>

namespace
{
class CTestCtrl : public CBaseCtrl
{
public:
    bool Undo() override { return true; }
    bool Redo() override { return false; }
};

bool IsMainWindow(const SMVC& item)
{
    return dynamic_cast<QMainWindow*>(item.pView) != nullptr;
}
} // namespace

class tst_CMVCManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void lookUpOverAnEmptyRegistryFindsNothing() { QVERIFY(!CMVCManager::FindFirst(IsMainWindow)); }

    void argumentsAreModelViewControllerAndFieldsModelControllerView()
    {
        CBaseModel model;
        QWidget view;
        CTestCtrl ctrl;
        CMVCManager::PushMVC(&model, &view, &ctrl);
        QCOMPARE(CMVCManager::m_vctItems.size(), std::size_t(1));
        const auto& [pModel, pCtrl, pView] = CMVCManager::m_vctItems.front();
        QCOMPARE(pModel, &model);
        QCOMPARE(pCtrl, static_cast<CBaseCtrl*>(&ctrl));
        QCOMPARE(pView, &view);
    }

    void theEarlierPushedRecordWins()
    {
        QMainWindow first;
        QMainWindow second;
        CMVCManager::PushMVC(nullptr, &first, nullptr);
        CMVCManager::PushMVC(nullptr, &second, nullptr);
        QCOMPARE(CMVCManager::FindFirst(IsMainWindow)->pView, static_cast<QWidget*>(&first));
    }

    void titlesAreComparedCaseSensitively()
    {
        QWidget view;
        view.setWindowTitle(QStringLiteral("Image View [0]"));
        CMVCManager::PushMVC(nullptr, &view, nullptr);
        const auto find = [](const QString& strTitle) {
            return CMVCManager::FindFirst(
                [&](const SMVC& item) { return item.pView && item.pView->windowTitle() == strTitle; });
        };
        QVERIFY(find(QStringLiteral("Image View [0]")));
        QVERIFY(!find(QStringLiteral("image view [0]")));
    }

    void duplicatesAndNullsAreAccepted()
    {
        QWidget view;
        CMVCManager::PushMVC(nullptr, &view, nullptr);
        CMVCManager::PushMVC(nullptr, &view, nullptr);
        QCOMPARE(CMVCManager::m_vctItems.size(), std::size_t(2));
    }

    void aRecordDisappearsWithAnyOfItsObjects_data()
    {
        QTest::addColumn<int>("nVictim");
        QTest::newRow("model") << 0;
        QTest::newRow("view") << 1;
        QTest::newRow("controller") << 2;
    }

    void aRecordDisappearsWithAnyOfItsObjects()
    {
        QFETCH(int, nVictim);
        auto pModel = std::make_unique<CBaseModel>();
        auto pView = std::make_unique<QWidget>();
        auto pCtrl = std::make_unique<CTestCtrl>();
        QWidget other;
        CMVCManager::PushMVC(pModel.get(), pView.get(), pCtrl.get());
        CMVCManager::PushMVC(nullptr, &other, nullptr);
        if (nVictim == 0)
            pModel.reset();
        else if (nVictim == 1)
            pView.reset();
        else
            pCtrl.reset();
        QCOMPARE(CMVCManager::m_vctItems.size(), std::size_t(1));
        QCOMPARE(CMVCManager::m_vctItems.front().pView, &other);
    }
};

VANTOR_TEST_MAIN(tst_CMVCManager)
#include "tst_CMVCManager.moc"
