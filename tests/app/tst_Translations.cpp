// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "app/CMainWindow.h"
#include "app/CMessageBar.h"
#include "app/CShortcutsDlg.h"
#include "app/CommandLine.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSet>
#include <QToolBar>
#include <QTranslator>
#include <QTreeWidget>
#include <memory>

namespace
{
using Actions = QList<QAction*>;

/// The menu bar's entries, then those of each menu and of its submenus. What a menu adds when it opens is
/// there, too.
void Collect(QMenu* pMenu, QList<Actions>& lstMenus)
{
    Q_EMIT pMenu->aboutToShow();
    lstMenus.append(pMenu->actions());
    for (const QAction* pEntry : pMenu->actions())
        if (pEntry->menu())
            Collect(pEntry->menu(), lstMenus);
}

QList<Actions> MenusOf(const CMainWindow& window)
{
    QList<Actions> lstMenus{window.menuBar()->actions()};
    for (const QAction* pTop : window.menuBar()->actions())
        Collect(pTop->menu(), lstMenus);
    return lstMenus;
}

QStringList TextsOf(const CMainWindow& window)
{
    QStringList lstTexts;
    for (const Actions& actions : MenusOf(window))
        for (const QAction* pEntry : actions)
            lstTexts.append(pEntry->text());
    return lstTexts;
}

/// @return the letter in upper case, null without one
QChar MnemonicOf(const QAction* pEntry)
{
    const QKeySequence key = QKeySequence::mnemonic(pEntry->text());
    return key.isEmpty() ? QChar() : QChar(key[0] & 0xFFFF);
}

/// What a bar shows when it has no room for all of its entries.
bool HasExtension(const QWidget* pBar, const char* pName)
{
    const auto* pButton = pBar->findChild<QWidget*>(QLatin1String(pName));
    return pButton && pButton->isVisible();
}

/// "열기(&O)..." without its letter, as the English texts are without "&".
bool HasTraceOfMnemonic(const QString& strText)
{
    static const QRegularExpression letter(QStringLiteral("&|\\([A-Z0-9]\\)|\\(\\)|\\.\\.\\."));
    return letter.match(strText).hasMatch() ||
           strText.count(QLatin1Char('(')) != strText.count(QLatin1Char(')'));
}
} // namespace

class tst_Translations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const CMainWindow window;
        m_lstEnglish = TextsOf(window);
        QVERIFY(m_lstEnglish.contains(QStringLiteral("&Open...")));
        QVERIFY(m_lstEnglish.contains(QStringLiteral("&Clear the List")));
        QVERIFY(m_lstEnglish.contains(QStringLiteral("&Log")));
    }

    void init()
    {
        QFETCH(QString, language);
        m_pTranslator = std::make_unique<QTranslator>();
        QVERIFY(m_pTranslator->load(QStringLiteral(":/app/translations/vantor-viewer_%1.qm").arg(language)));
        QVERIFY(QCoreApplication::installTranslator(m_pTranslator.get()));
    }

    void cleanup() { m_pTranslator.reset(); }

    void everyMenuEntryIsTranslated_data() { Languages(false); }
    void everyMenuEntryIsTranslated()
    {
        const CMainWindow window;
        const QStringList lstTexts = TextsOf(window);
        QCOMPARE(lstTexts.size(), m_lstEnglish.size());
        for (int i = 0; i < lstTexts.size(); ++i)
            if (!m_lstEnglish[i].isEmpty())
                QVERIFY2(lstTexts[i] != m_lstEnglish[i], qPrintable(lstTexts[i]));
    }

    void everyMenuEntryHasAMnemonicThatIsUniqueInItsMenu_data() { Languages(true); }
    void everyMenuEntryHasAMnemonicThatIsUniqueInItsMenu()
    {
        const CMainWindow window;
        for (const Actions& actions : MenusOf(window)) {
            QSet<QChar> letters;
            for (const QAction* pEntry : actions) {
                // A dock's entry has the text of its title bar, which shows no mnemonic.
                if (pEntry->isSeparator())
                    continue;
                const QChar letter = MnemonicOf(pEntry);
                const bool bTyped = letter.unicode() < 128 && letter.isLetterOrNumber();
                QVERIFY2(bTyped, qUtf8Printable(pEntry->text())); // on any keyboard
                QVERIFY2(!letters.contains(letter), qUtf8Printable(pEntry->text()));
                letters.insert(letter);
            }
        }
    }

    void menuBarAndToolBarHaveRoomInAWindowOfTheFirstStart_data() { Languages(true); }
    void menuBarAndToolBarHaveRoomInAWindowOfTheFirstStart()
    {
        CMainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(window.size(), QSize(1144, 820));
        QVERIFY(!HasExtension(window.menuBar(), "qt_menubar_ext_button"));
        const auto* pBar = window.findChild<QToolBar*>(QStringLiteral("ToolBar"));
        QVERIFY(!HasExtension(pBar, "qt_toolbar_ext_button"));
        for (const QDockWidget* pDock : window.findChildren<QDockWidget*>())
            if (pDock->isVisible())
                QVERIFY2(pDock->fontMetrics().horizontalAdvance(pDock->windowTitle()) < pDock->width() - 60,
                         qUtf8Printable(pDock->windowTitle()));
    }

    void theToolBarsTipsShowNoMnemonics_data() { Languages(true); }
    void theToolBarsTipsShowNoMnemonics()
    {
        const CMainWindow window;
        for (const QAction* pAction : window.findChild<QToolBar*>(QStringLiteral("ToolBar"))->actions()) {
            QVERIFY2(!HasTraceOfMnemonic(pAction->toolTip()), qUtf8Printable(pAction->toolTip()));
            QVERIFY2(!HasTraceOfMnemonic(pAction->iconText()), qUtf8Printable(pAction->iconText()));
        }
    }

    void theListOfShortcutsShowsWholeTextsWithoutMnemonics_data() { Languages(true); }
    void theListOfShortcutsShowsWholeTextsWithoutMnemonics()
    {
        const CMainWindow window;
        std::vector<QAction*> vctActions;
        for (const Actions& actions : MenusOf(window))
            for (QAction* pEntry : actions)
                vctActions.push_back(pEntry);
        CShortcutsDlg dialog(vctActions, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        const auto* pTree = dialog.findChild<QTreeWidget*>();
        const QTreeWidgetItem* pMenus = pTree->topLevelItem(0);
        QVERIFY(pMenus->childCount() > 20);
        for (int i = 0; i < pMenus->childCount(); ++i)
            QVERIFY2(!HasTraceOfMnemonic(pMenus->child(i)->text(0)),
                     qUtf8Printable(pMenus->child(i)->text(0)));
        for (int i = 0; i < pTree->columnCount(); ++i) {
            const int nWanted = static_cast<const QAbstractItemView*>(pTree)->sizeHintForColumn(i);
            QVERIFY2(nWanted <= pTree->columnWidth(i), qPrintable(QString::number(nWanted)));
        }
        QVERIFY(pTree->header()->length() <= pTree->viewport()->width());
    }

    void whatQtSaysInTheHostIsTranslated_data() { Languages(false); }
    void whatQtSaysInTheHostIsTranslated()
    {
        const CShortcutsDlg dialog({}, nullptr);
        const auto* pButtons = dialog.findChild<QDialogButtonBox*>();
        QVERIFY(!pButtons->button(QDialogButtonBox::Close)->text().contains(QStringLiteral("Close")));
        const QString strHelp =
            SCommandLine::Parse({QStringLiteral("vantor-viewer"), QStringLiteral("--help")}).strHelp;
        QVERIFY(strHelp.contains(QStringLiteral("--screenshot")));
        for (const char* pWord : {"Usage", "Options", "options", "Arguments", "Show", "Keep", "Write"})
            QVERIFY2(!strHelp.contains(QLatin1String(pWord)), pWord);
        const SCommandLine wrong =
            SCommandLine::Parse({QStringLiteral("vantor-viewer"), QStringLiteral("--nonsense")});
        QVERIFY(wrong.strError.contains(QStringLiteral("nonsense")));
        QVERIFY(!wrong.strError.contains(QStringLiteral("option")));
    }

    void theNumberOfFurtherMessagesIsSaid_data() { Languages(true); }
    void theNumberOfFurtherMessagesIsSaid()
    {
        CMessageBar bar(nullptr);
        for (int i = 0; i < 20; ++i)
            bar.Tell(QString(i + 1, QLatin1Char('x')));
        QStringList lstTexts;
        for (const QLabel* pLabel : bar.findChildren<QLabel*>())
            lstTexts.append(pLabel->text());
        const QString strText = lstTexts.join(QLatin1Char(' '));
        QVERIFY2(strText.contains(QStringLiteral("17")), qUtf8Printable(strText));
        QFETCH(QString, language);
        QCOMPARE(strText.contains(QStringLiteral("more in the log")), language == QStringLiteral("en"));
    }

private:
    static void Languages(bool bEnglishToo)
    {
        QTest::addColumn<QString>("language");
        for (const char* pName : {"ko", "vi"})
            QTest::newRow(pName) << QString::fromLatin1(pName);
        if (bEnglishToo)
            QTest::newRow("en") << QStringLiteral("en");
    }

    QStringList m_lstEnglish;
    std::unique_ptr<QTranslator> m_pTranslator;
};

VANTOR_TEST_MAIN(tst_Translations)
#include "tst_Translations.moc"
