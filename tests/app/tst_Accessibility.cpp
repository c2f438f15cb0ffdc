// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What a person without a mouse or without sight meets: names, roles, and the way of the Tab key.
#include "CMessageBar.h"
#include "CShortcutsDlg.h"
#include "HostSupport.h"
#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/process/median/CImage2DProcessMedianDlg.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationDlg.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlg.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/shell/dock/CSelectionDialog.h>
#include <VantorCommon/view2d/CImageView2DGotoDlg.h>
#include <VantorCommon/view3d/CImageView3D.h>

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAccessibleInterface>
#include <QDockWidget>
#include <QLineEdit>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabBar>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <map>
#include <set>
#include <vector>

namespace
{
using Role = QAccessible::Role;

/// The window in 2x2 with every dock, an image in each viewer and a message.
class FullHost : public Host
{
public:
    bool ShowAll()
    {
        if (!Show({kPhoto, kPhoto, kPhoto, kPhoto}))
            return false;
        for (QDockWidget* pDock : window.findChildren<QDockWidget*>())
            pDock->show();
        window.resize(1270, 1000);
        window.findChild<CMessageBar*>()->Tell(QStringLiteral("Something has failed."));
        QCoreApplication::processEvents();
        return ShownViewers() == 4;
    }

    /// Opens a dialog of that name: by its menu entry, or as the library does.
    QWidget* Open(const QString& strName)
    {
        if (strName == QStringLiteral("window"))
            return &window;
        if (strName == QStringLiteral("window with one viewer")) {
            window.ChangeLayout(QStringLiteral("1x1"));
            return &window;
        }
        if (strName == QStringLiteral("window with a 3D view")) {
            window.ChangeLayout(QStringLiteral("1x1"));
            Viewer(0)->slot_Press3D();
            auto* pView = Viewer(0)->findChild<CImageView3D*>();
            pView->setFocus();
            return QTest::qWaitFor([pView] { return pView->isValid() && pView->hasFocus(); }) ? &window
                                                                                              : nullptr;
        }
        if (strName == QStringLiteral("selection")) {
            auto* pDialog = new CSelectionDialog(&window);
            pDialog->AddSelectionItem(QStringLiteral("Image View [0]"));
            return Ready(pDialog);
        }
        if (strName == QStringLiteral("goto"))
            return Ready(new CImageView2DGotoDlg(&window));
        if (strName == QStringLiteral("settings"))
            return Ready<CSettingDlg>("Settings", "Preferences...");
        if (strName == QStringLiteral("median"))
            return Ready<CImage2DProcessMedianDlg>("Tools", "Median Filter...");
        if (strName == QStringLiteral("sobel"))
            return Ready<CImage2DProcessSobelDlg>("Tools", "Sobel Filter...");
        if (strName == QStringLiteral("ocr"))
            return Ready<CImage2DProcessOCRDlg>("Tools", "OCR...");
        if (strName == QStringLiteral("threshold"))
            return Ready<CImage2DProcessOperationDlg>("Tools", "Threshold...");
        if (strName == QStringLiteral("shortcuts"))
            return Ready<CShortcutsDlg>("Help", "Shortcuts");
        return nullptr;
    }

private:
    static QWidget* Ready(QWidget* pDialog) { return pDialog && Activate(*pDialog) ? pDialog : nullptr; }
    template <class Dialog> QWidget* Ready(const char* pMenu, const char* pEntry)
    {
        Entry(pMenu, pEntry)->trigger();
        return Ready(window.findChild<Dialog*>());
    }
};

bool IsPartOfAnother(const QWidget& widget)
{
    const QWidget* pParent = widget.parentWidget();
    return qobject_cast<const QAbstractSpinBox*>(pParent) || qobject_cast<const QComboBox*>(pParent);
}

/// The role that a control has to have, NoRole for what nobody acts on.
Role RoleOf(const QWidget& widget)
{
    if (IsPartOfAnother(widget) || widget.focusProxy())
        return Role::NoRole;
    if (const auto* pTool = qobject_cast<const QToolButton*>(&widget); pTool && pTool->menu())
        return Role::ButtonMenu;
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(&widget))
        return !pButton->isCheckable()    ? Role::Button
               : pButton->autoExclusive() ? Role::RadioButton
                                          : Role::CheckBox;
    static const std::vector<std::pair<const char*, Role>> vctRoles = {
        {"QComboBox", Role::ComboBox},     {"QAbstractSpinBox", Role::SpinBox},
        {"QLineEdit", Role::EditableText}, {"QTextEdit", Role::EditableText},
        {"QTabBar", Role::PageTabList},    {"QTableView", Role::Table},
        {"QTreeView", Role::Tree},         {"QListView", Role::List},
        {"QSlider", Role::Slider},         {"CImageViewer", Role::Border},
    };
    for (const auto& [pClass, eRole] : vctRoles)
        if (widget.inherits(pClass))
            return eRole;
    return widget.focusPolicy() & Qt::TabFocus ? Role::Client : Role::NoRole;
}

bool IsActedOn(Role eRole)
{
    static const std::set<Role> setRoles = {
        Role::Button,       Role::RadioButton, Role::CheckBox,  Role::ComboBox,   Role::SpinBox,
        Role::EditableText, Role::Table,       Role::Tree,      Role::List,       Role::ListItem,
        Role::Slider,       Role::MenuItem,    Role::PopupMenu, Role::ButtonMenu, Role::ToolBar,
        Role::PageTab,      Role::ProgressBar, Role::Dialog,    Role::Window,     Role::Grouping};
    return setRoles.count(eRole) > 0;
}

QString NameOf(QAccessibleInterface* pNode)
{
    return pNode ? pNode->text(QAccessible::Name) : QString();
}

QRect PlaceOf(const QWidget& widget)
{
    return QRect(widget.mapTo(widget.window(), QPoint()), widget.size());
}

QString Describe(const QWidget& widget)
{
    const QRect rect = PlaceOf(widget);
    return QStringLiteral("%1 '%2' at %3,%4 %5x%6")
        .arg(QLatin1String(widget.metaObject()->className()), widget.objectName())
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}
std::vector<QWidget*> Controls(const QWidget& window)
{
    std::vector<QWidget*> vctControls;
    for (QWidget* pWidget : window.findChildren<QWidget*>())
        if (pWidget->isVisible() && pWidget->window() == &window && RoleOf(*pWidget) != Role::NoRole)
            vctControls.push_back(pWidget);
    return vctControls;
}

/// Walks the tree of interfaces and collects what somebody could act on without knowing what it is.
void CollectNameless(QAccessibleInterface* pNode, const QString& strPath, QStringList& lstNameless)
{
    const QString strHere = QStringLiteral("%1/%2 '%3'").arg(strPath).arg(pNode->role()).arg(NameOf(pNode));
    // The list of a combo box is known by the box, the buttons of a dialog by themselves.
    const Role eParent = pNode->parent() ? pNode->parent()->role() : Role::NoRole;
    const bool bPart = eParent == Role::ComboBox || pNode->object() == nullptr ||
                       (pNode->object() && pNode->object()->inherits("QDialogButtonBox"));
    const bool bItem = pNode->role() == Role::ListItem || pNode->role() == Role::MenuItem;
    if (!pNode->state().invisible && IsActedOn(pNode->role()) && NameOf(pNode).isEmpty() && (!bPart || bItem))
        lstNameless << strHere;
    for (int i = 0; i < pNode->childCount(); ++i)
        if (QAccessibleInterface* pChild = pNode->child(i))
            CollectNameless(pChild, strHere, lstNameless);
        else
            lstNameless << strHere + QStringLiteral(": no child %1").arg(i);
}

/// Where the Tab key leads, beginning at the widget that has the focus, until it comes round.
QList<QWidget*> TabRound(QWidget& window, Qt::Key key = Qt::Key_Tab)
{
    constexpr int kMostStops = 200;
    QList<QWidget*> lstStops;
    QWidget* pFirst = window.focusWidget();
    do {
        lstStops << window.focusWidget();
        QTest::keyClick(window.windowHandle(), key);
    } while (window.focusWidget() != pFirst && lstStops.size() < kMostStops);
    return lstStops;
}

/// What has an order of its own: a dock, a viewer, or the whole dialog.
const QWidget* SectionOf(const QWidget& widget)
{
    for (const QWidget* pEach = &widget; !pEach->isWindow(); pEach = pEach->parentWidget())
        if (pEach->inherits("QDockWidget") || pEach->inherits("CImageViewer") ||
            pEach->inherits("CMessageBar"))
            return pEach;
    return widget.window();
}

/// Whether a reader comes to the second after the first.
bool IsBefore(const QWidget& first, const QWidget& second)
{
    const QRect a = PlaceOf(first);
    const QRect b = PlaceOf(second);
    return a.bottom() < b.top() || (b.bottom() >= a.top() && a.right() < b.left());
}

/// In the docks stand the panels of the viewer that had the keyboard last.
bool IsOfAnActiveViewer(const QWidget& widget)
{
    return SectionOf(widget)->inherits("QDockWidget") && RoleOf(widget) != Role::Client &&
           !widget.inherits("QTableView");
}

/// Only the pressed button of a group is reached by Tab, the others by the arrows.
bool IsReachedByArrows(const QWidget& widget)
{
    const auto* pButton = qobject_cast<const QAbstractButton*>(&widget);
    return pButton && pButton->autoExclusive() && pButton->isCheckable() && !pButton->isChecked();
}
} // namespace

class tst_Accessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void everyControlHasANameAndItsRole_data() { AddWindows(); }
    void everyControlHasANameAndItsRole()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        QWidget* pWindow = host.Open(strWindow);
        QVERIFY(pWindow);
        QVERIFY(!NameOf(QAccessible::queryAccessibleInterface(pWindow)).isEmpty());
        const auto vctControls = Controls(*pWindow);
        QVERIFY(vctControls.size() >= 2);
        for (QWidget* pWidget : vctControls) {
            QAccessibleInterface* pNode = QAccessible::queryAccessibleInterface(pWidget);
            QVERIFY2(pNode, qPrintable(Describe(*pWidget)));
            QVERIFY2(!NameOf(pNode).trimmed().isEmpty(), qPrintable(Describe(*pWidget)));
            QVERIFY2(pNode->role() == RoleOf(*pWidget), qPrintable(Describe(*pWidget)));
        }
    }

    void theInterfacesHaveNothingNamelessThatCanBeActedOn_data() { AddWindows(); }
    void theInterfacesHaveNothingNamelessThatCanBeActedOn()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        QWidget* pWindow = host.Open(strWindow);
        QVERIFY(pWindow);
        QStringList lstNameless;
        CollectNameless(QAccessible::queryAccessibleInterface(pWindow), QString(), lstNameless);
        QCOMPARE(lstNameless, QStringList());
    }

    void buttonsThatShowOnlyAnIconHaveAToolTip_data() { AddWindows(); }
    void buttonsThatShowOnlyAnIconHaveAToolTip()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        QWidget* pWindow = host.Open(strWindow);
        QVERIFY(pWindow);
        for (const QWidget* pWidget : Controls(*pWindow)) {
            const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget);
            if (!pButton ||
                pWidget->inherits("QDockWidgetTitleButton")) // Qt's own, in the menu of docks, too
                continue;
            const auto* pTool = qobject_cast<const QToolButton*>(pWidget);
            const bool bText =
                !pButton->text().isEmpty() && (!pTool || pTool->toolButtonStyle() != Qt::ToolButtonIconOnly);
            QVERIFY2(bText || !pButton->toolTip().isEmpty(), qPrintable(Describe(*pWidget)));
        }
    }

    void aChooserIsKnownByItsLabel_data() { AddWindows(); }
    void aChooserIsKnownByItsLabel()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        QWidget* pWindow = host.Open(strWindow);
        QVERIFY(pWindow);
        for (QWidget* pWidget : Controls(*pWindow)) {
            if (!pWidget->inherits("QComboBox") && !pWidget->inherits("QAbstractSpinBox"))
                continue;
            QAccessibleInterface* pNode = QAccessible::queryAccessibleInterface(pWidget);
            const auto lstLabels = pNode->relations(QAccessible::Label);
            QVERIFY2(std::any_of(lstLabels.begin(), lstLabels.end(),
                                 [](const auto& label) { return label.first->role() == Role::StaticText; }),
                     qPrintable(Describe(*pWidget)));
        }
    }

    void theTabKeyReachesEveryControlAndComesRound_data() { AddWindows(); }
    void theTabKeyReachesEveryControlAndComesRound()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        QWidget* pWindow = host.Open(strWindow);
        QVERIFY(pWindow && pWindow->focusWidget());
        const QList<QWidget*> lstStops = TabRound(*pWindow);
        for (int i = 0; i < lstStops.size(); ++i)
            QVERIFY2(lstStops.indexOf(lstStops[i]) == i, qPrintable(Describe(*lstStops[i])));
        for (QWidget* pWidget : Controls(*pWindow)) {
            if (IsOfAnActiveViewer(*pWidget) && host.ShownViewers() > 1)
                continue; // on the way each viewer has put its own panels into the docks
            const bool bStop = pWidget->isEnabled() && (pWidget->focusPolicy() & Qt::TabFocus) &&
                               !IsReachedByArrows(*pWidget);
            QVERIFY2(lstStops.contains(pWidget) == bStop, qPrintable(Describe(*pWidget)));
        }
        QList<QWidget*> lstBack = TabRound(*pWindow, Qt::Key_Backtab);
        std::reverse(lstBack.begin() + 1, lstBack.end());
        QCOMPARE(lstBack.size(), lstStops.size());
        if (pWindow != &host.window || host.ShownViewers() == 1)
            QCOMPARE(lstBack, lstStops);
    }

    void theTabKeyGoesInReadingOrder_data() { AddWindows(); }
    void theTabKeyGoesInReadingOrder()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        QWidget* pWindow = host.Open(strWindow);
        QVERIFY(pWindow && pWindow->focusWidget());
        std::map<const QWidget*, QList<QWidget*>> mapSections;
        for (QWidget* pStop : TabRound(*pWindow))
            if (RoleOf(*pStop) != Role::Client &&
                !pStop->inherits("CImageViewer")) // these contain the others
                mapSections[SectionOf(*pStop)] << pStop;
        for (auto& [pSection, lstStops] : mapSections) {
            // The round begins anywhere: at its first stop in the order of reading.
            const auto itFirst = std::min_element(lstStops.begin(), lstStops.end(),
                                                  [](auto* a, auto* b) { return IsBefore(*a, *b); });
            std::rotate(lstStops.begin(), itFirst, lstStops.end());
            for (int i = 1; i < lstStops.size(); ++i)
                QVERIFY2(IsBefore(*lstStops[i - 1], *lstStops[i]), qPrintable(Describe(*lstStops[i])));
        }
    }

    void everyButtonOfAViewerHasAnEntryInTheMenusThatDoesTheSame()
    {
        const std::map<QString, QStringList> mapEntries = {
            {QStringLiteral("2D view"), {QStringLiteral("View"), QStringLiteral("2D View")}},
            {QStringLiteral("3D view"), {QStringLiteral("View"), QStringLiteral("3D View")}},
            {QStringLiteral("Select"), {QStringLiteral("Tools"), QStringLiteral("Select")}},
            {QStringLiteral("Pan"), {QStringLiteral("Tools"), QStringLiteral("Pan")}},
            {QStringLiteral("Fit to view"), {QStringLiteral("View"), QStringLiteral("Fit to Window")}},
            {QStringLiteral("Rotate left"), {QStringLiteral("Edit"), QStringLiteral("Rotate Left")}},
            {QStringLiteral("Rotate right"), {QStringLiteral("Edit"), QStringLiteral("Rotate Right")}},
            {QStringLiteral("Previous image"), {QStringLiteral("View"), QStringLiteral("Previous Image")}},
            {QStringLiteral("Next image"), {QStringLiteral("View"), QStringLiteral("Next Image")}},
            {QStringLiteral("Capture the screen"),
             {QStringLiteral("Tools"), QStringLiteral("Capture the Screen")}},
            {QStringLiteral("Ruler"), {QStringLiteral("Tools"), QStringLiteral("Ruler")}},
            {QStringLiteral("Clear the images"),
             {QStringLiteral("File"), QStringLiteral("Close All Images")}},
            {QStringLiteral("Add images"), {QStringLiteral("File"), QStringLiteral("Add Images...")}},
            {QStringLiteral("Open a file"), {QStringLiteral("File"), QStringLiteral("Open...")}},
            {QStringLiteral("Save the image"), {QStringLiteral("File"), QStringLiteral("Save As...")}},
        };
        FullHost host;
        QVERIFY(host.ShowAll());
        const auto lstButtons = host.Viewer(0)->findChildren<QPushButton*>();
        QCOMPARE(lstButtons.size(), 15);
        for (const QPushButton* pButton : lstButtons) {
            QCOMPARE(pButton->focusPolicy(), Qt::NoFocus); // undo stays with the view
            const auto it = mapEntries.find(pButton->toolTip());
            QVERIFY2(it != mapEntries.end(), qPrintable(pButton->toolTip()));
            const QAction* pEntry = host.Entry(it->second);
            QVERIFY2(pEntry, qPrintable(pButton->toolTip()));
            QVERIFY2(!pEntry->shortcut().isEmpty(), qPrintable(pButton->toolTip()));
            QVERIFY2(pEntry->text().contains(QLatin1Char('&')), qPrintable(pButton->toolTip()));
        }
    }

    void everyEntryOfTheMenuBarHasItsMnemonicAndNoneTwice()
    {
        FullHost host;
        QVERIFY(host.ShowAll());
        CheckMnemonics(host.window.menuBar()->actions());
    }

    void anActionOfTheAccessibilityInterfaceDoesWhatAClickDoes()
    {
        FullHost host;
        QVERIFY(host.ShowAll());
        const auto act = [&](QAbstractButton* pButton) {
            auto* pActions = QAccessible::queryAccessibleInterface(pButton)->actionInterface();
            pActions->doAction(pActions->actionNames().constFirst());
        };
        for (QToolButton* pButton : host.window.findChild<QToolBar*>()->findChildren<QToolButton*>())
            if (pButton->toolTip() == QStringLiteral("Median Filter"))
                act(pButton);
        QTRY_VERIFY(host.window.findChild<CImage2DProcessMedianDlg*>());
        const auto button = [&](const char* pTip) {
            for (QPushButton* pButton : host.Viewer(1)->findChildren<QPushButton*>())
                if (pButton->toolTip() == QLatin1String(pTip))
                    return pButton;
            return static_cast<QPushButton*>(nullptr);
        };
        act(button("3D view"));
        QTRY_VERIFY(host.Viewer(1)->Is3DShown());
        QVERIFY(button("3D view")->isChecked() && !button("2D view")->isChecked());
        act(button("3D view")); // nothing to change
        QVERIFY(host.Viewer(1)->Is3DShown() && button("3D view")->isChecked());
        act(button("2D view"));
        QTRY_VERIFY(!host.Viewer(1)->Is3DShown());
        act(button("Pan"));
        QTRY_VERIFY(button("Pan")->isChecked() && !button("Select")->isChecked());
        const auto title = [&] {
            for (const QLabel* pLabel : host.Viewer(1)->findChildren<QLabel*>())
                if (pLabel->text().startsWith(QLatin1String("[View-")))
                    return pLabel->text();
            return QString();
        };
        QCOMPARE(title(), QStringLiteral("[View-1][160x120x3x8]"));
        act(button("Rotate left"));
        QTRY_COMPARE(title(), QStringLiteral("[View-1][120x160x3x8]"));
    }

    void aToolsParameterIsChangedByKeysAlone()
    {
        FullHost host;
        QVERIFY(host.ShowAll());
        auto* pDialog = qobject_cast<CImage2DProcessBaseDlg*>(host.Open(QStringLiteral("median")));
        QVERIFY(pDialog);
        ToolParts parts(*pDialog);
        for (int i = 0; i < 9 && pDialog->focusWidget() != parts.Tree(); ++i)
            parts.Key(Qt::Key_Tab);
        QCOMPARE(pDialog->focusWidget(), parts.Tree());
        parts.Key(Qt::Key_Left);
        parts.Key(Qt::Key_Right);
        parts.Key(Qt::Key_F2);
        auto* pEditor = qobject_cast<QComboBox*>(parts.Editor());
        QVERIFY(pEditor);
        QCOMPARE(NameOf(QAccessible::queryAccessibleInterface(pEditor)), pEditor->currentText());
        QCOMPARE(pEditor->accessibleName(), QStringLiteral("Type"));
        parts.Key(Qt::Key_Down);
        parts.Key(Qt::Key_Tab);
        QTRY_COMPARE(parts.Cell(0, 1), QStringLiteral("EImage2DProcessMedian5x5"));
        QCOMPARE(parts.Message(), QString()); // nothing has run
    }

    void escapeClosesADialog_data() { AddWindows(); }
    void escapeClosesADialog()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        const QPointer<QWidget> pWindow = host.Open(strWindow);
        QVERIFY(pWindow);
        const bool bDialog = pWindow->inherits("QDialog");
        QTest::keyPress(pWindow->windowHandle(), Qt::Key_Escape); // a release would find no window
        QTRY_COMPARE(pWindow && pWindow->isVisible(), !bDialog);
    }

    void returnInAToolOrInTheSettingsRunsNothing_data()
    {
        QTest::addColumn<QString>("strWindow");
        for (const char* pName : {"settings", "median", "sobel", "ocr", "threshold"})
            QTest::newRow(pName) << QString::fromLatin1(pName);
    }
    void returnInAToolOrInTheSettingsRunsNothing()
    {
        QFETCH(QString, strWindow);
        FullHost host;
        QVERIFY(host.ShowAll());
        QWidget* pWindow = host.Open(strWindow);
        QVERIFY(pWindow && pWindow->focusWidget());
        int nPressed = 0;
        for (const QAbstractButton* pButton : pWindow->findChildren<QAbstractButton*>())
            connect(pButton, &QAbstractButton::pressed, this, [&nPressed] { ++nPressed; });
        for (QWidget* pStop : TabRound(*pWindow)) {
            if (pStop->inherits("QTextEdit") || pStop->inherits("QAbstractButton"))
                continue;
            pStop->setFocus();
            QTest::keyClick(pWindow->windowHandle(), Qt::Key_Return);
            QVERIFY2(nPressed == 0 && pWindow->isVisible(), qPrintable(Describe(*pStop)));
        }
    }

private:
    static void AddWindows()
    {
        QTest::addColumn<QString>("strWindow");
        for (const char* pName : {"window", "window with one viewer", "window with a 3D view", "settings",
                                  "median", "sobel", "ocr", "threshold", "shortcuts", "selection", "goto"})
            QTest::newRow(pName) << QString::fromLatin1(pName);
    }

    static void CheckMnemonics(const QList<QAction*>& lstActions)
    {
        std::set<QString> setLetters;
        for (const QAction* pAction : lstActions) {
            // A menu without mnemonics is searched by the first letters, as that of the docks.
            if (pAction->isSeparator() || qobject_cast<QDockWidget*>(pAction->parent()))
                continue;
            const QString strLetter = QKeySequence::mnemonic(pAction->text()).toString();
            QVERIFY2(!strLetter.isEmpty(), qPrintable(pAction->text()));
            QVERIFY2(setLetters.insert(strLetter).second, qPrintable(pAction->text()));
            if (pAction->menu())
                CheckMnemonics(pAction->menu()->actions());
        }
    }
};

VANTOR_TEST_MAIN(tst_Accessibility)
#include "tst_Accessibility.moc"
