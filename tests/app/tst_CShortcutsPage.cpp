// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The keys of the entries: changed in the preferences, kept, and the same in every language.
#include "CShortcutsPage.h"

#include "CActionKeys.h"
#include "CShortcutsDlg.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <QKeySequenceEdit>
#include <QPushButton>
#include <QTranslator>
#include <QTreeWidget>

namespace
{
class CKeysHost : public Host
{
public:
    CShortcutsPage* Page() const { return window.findChild<CShortcutsPage*>(); }
    CActionKeys* Keys() const { return window.findChild<CActionKeys*>(); }
    QTreeWidgetItem* Row(const char* pAction) const
    {
        return Page()
            ->findChild<QTreeWidget*>()
            ->findItems(QLatin1String(pAction), Qt::MatchExactly)
            .value(0);
    }
    /// As if the keys had been pressed in the editor of the action.
    void Enter(const char* pAction, const char* pKeys) const
    {
        Page()->findChild<QTreeWidget*>()->setCurrentItem(Row(pAction));
        auto* pEdit = Page()->findChild<QKeySequenceEdit*>();
        pEdit->setKeySequence(QKeySequence(QLatin1String(pKeys)));
        Q_EMIT pEdit->editingFinished();
    }
    QString Told() const
    {
        for (const QLabel* pLabel : Page()->findChildren<QLabel*>())
            if (pLabel->text().startsWith(QLatin1String("These keys")))
                return pLabel->text();
        return QString();
    }
    void Press(const char* pButton) const
    {
        for (QPushButton* pEach : Page()->findChildren<QPushButton*>())
            if (pEach->text().remove(QLatin1Char('&')) == QLatin1String(pButton))
                pEach->click();
    }
};

QString KeysOf(const QAction* pAction)
{
    return QKeySequence::listToString(pAction->shortcuts());
}
} // namespace

class tst_CShortcutsPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Host::ForgetSettings();
        Host::StoreSetting(HostSettings::kShortcuts, QString());
    }

    void aChangedKeyWorksAtOnceAndInTheNextWindow()
    {
        {
            CKeysHost host;
            QVERIFY(host.Show({kPhoto}));
            host.Enter("Zoom In", "Ctrl+Alt+I");
            QCOMPARE(host.Row("Zoom In")->text(1), QStringLiteral("Ctrl+Alt+I"));
            const double dblBefore = host.View(0)->GetZoom();
            host.Key(Qt::Key_Plus, Qt::ControlModifier);
            QCOMPARE(host.View(0)->GetZoom(), dblBefore);
            host.Key(Qt::Key_I, Qt::ControlModifier | Qt::AltModifier);
            QVERIFY(host.View(0)->GetZoom() > dblBefore);
            host.Enter("Flip Horizontally", "H"); // had none
            host.Enter("Go To", "");
        }
        CKeysHost host;
        QVERIFY(host.Show({kPhoto}));
        QCOMPARE(
            KeysOf(host.Entry({QStringLiteral("View"), QStringLiteral("Zoom"), QStringLiteral("Zoom In")})),
            QStringLiteral("Ctrl+Alt+I"));
        QCOMPARE(KeysOf(host.Entry("Edit", "Flip Horizontally")), QStringLiteral("H"));
        QCOMPARE(KeysOf(host.Entry("View", "Go To...")), QString());
        QCOMPARE(KeysOf(host.Entry("File", "Print...")), QStringLiteral("Ctrl+P"));
    }

    void aKeyOfAnotherActionIsRefusedAndTold()
    {
        CKeysHost host;
        QVERIFY(host.Show());
        const QString strBefore = host.Row("Go To")->text(1);
        host.Enter("Go To", "Ctrl+P");
        QCOMPARE(host.Row("Go To")->text(1), strBefore);
        QCOMPARE(host.Told(), QStringLiteral("These keys belong to \"Print\"."));
        host.Enter("Go To", "Ctrl+Alt+J");
        QCOMPARE(host.Told(), QString());
    }

    void theDefaultsComeBack()
    {
        CKeysHost host;
        QVERIFY(host.Show());
        const QString strZoomIn = host.Row("Zoom In")->text(1);
        host.Enter("Zoom In", "Ctrl+Alt+I");
        host.Enter("Go To", "Ctrl+Alt+J");
        host.Page()->findChild<QTreeWidget*>()->setCurrentItem(host.Row("Zoom In"));
        host.Press("Default");
        QCOMPARE(host.Row("Zoom In")->text(1), strZoomIn);
        QCOMPARE(host.Row("Go To")->text(1), QStringLiteral("Ctrl+Alt+J"));
        host.Press("All Defaults");
        QCOMPARE(host.Row("Go To")->text(1), QStringLiteral("Ctrl+G"));
        QCOMPARE(CSettingManager::GetString(HostSettings::kShortcuts, QString()), QString());
    }

    void theListUnderHelpShowsTheKeysAsTheyAre()
    {
        CKeysHost host;
        QVERIFY(host.Show());
        host.Enter("Go To", "Ctrl+Alt+J");
        host.Entry("Help", "Shortcuts")->trigger();
        const auto* pTree = host.window.findChild<CShortcutsDlg*>()->findChild<QTreeWidget*>();
        const auto rows = pTree->findItems(QStringLiteral("Go To"), Qt::MatchExactly | Qt::MatchRecursive);
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows[0]->text(1), QStringLiteral("Ctrl+Alt+J"));
    }

    void theNamesAreUniqueAndTheSameInEveryLanguage()
    {
        const auto names = [] {
            const CKeysHost host;
            QStringList lstNames;
            for (const QAction* pAction : host.Keys()->Actions())
                lstNames << pAction->objectName();
            return lstNames;
        };
        const QStringList lstEnglish = names();
        QVERIFY(lstEnglish.size() > 80);
        QCOMPARE(QSet<QString>(lstEnglish.begin(), lstEnglish.end()).size(), lstEnglish.size());
        QTranslator korean;
        QVERIFY(korean.load(QStringLiteral(":/app/translations/vantor-viewer_ko.qm")));
        QCoreApplication::installTranslator(&korean);
        QCOMPARE(names(), lstEnglish);
        QCoreApplication::removeTranslator(&korean);
    }

    void whatCannotBeReadIsIgnored()
    {
        Host::StoreSetting(HostSettings::kShortcuts,
                           QStringLiteral("= x Nothing=Ctrl%2BA Go%20To=Ctrl%2BAlt%2BJ"));
        CKeysHost host;
        QCOMPARE(KeysOf(host.Entry("View", "Go To...")), QStringLiteral("Ctrl+Alt+J"));
    }
};

VANTOR_TEST_MAIN(tst_CShortcutsPage)
#include "tst_CShortcutsPage.moc"
