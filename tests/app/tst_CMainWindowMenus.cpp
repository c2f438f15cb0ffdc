// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "HostSupport.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QMimeData>
#include <QRegularExpression>
#include <QToolBar>
#include <QToolButton>

class tst_CMainWindowMenus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void withoutAnImageWhatWouldDoNothingIsDisabled()
    {
        Host host;
        QVERIFY(host.Show());
        QApplication::clipboard()->clear();
        for (const auto& [pMenu, pText] : kNeedImage)
            QVERIFY2(!host.IsEnabled(pMenu, pText), pText);
        for (const char* pText : {"Undo", "Redo", "Paste", "Delete"})
            QVERIFY2(!host.IsEnabled("Edit", pText), pText);
        QVERIFY(!host.IsEnabled("File", "Open Recent"));
        QVERIFY(!host.IsEnabled("View", "Next Image") && !host.IsEnabled("View", "Previous Image"));
        for (const char* pText : {"Open...", "Add Images...", "Quit"})
            QVERIFY2(host.IsEnabled("File", pText), pText);
        for (const char* pText : {"Median Filter...", "Sobel Filter...", "OCR...", "Ruler", "Globe"})
            QVERIFY2(host.IsEnabled("Tools", pText), pText);
    }

    void withAnImageWhatWorksOnItIsEnabled()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        for (const auto& [pMenu, pText] : kNeedImage)
            QVERIFY2(host.IsEnabled(pMenu, pText), pText);
        QVERIFY(host.IsEnabled("File", "Open Recent"));
        QVERIFY(!host.IsEnabled("Edit", "Undo") && !host.IsEnabled("Edit", "Delete"));
        host.Entry("Edit", "Copy")->trigger();
        QVERIFY(host.IsEnabled("Edit", "Paste"));
        QApplication::clipboard()->setText(QStringLiteral("words"));
        QVERIFY(!host.IsEnabled("Edit", "Paste"));
    }

    void undoRedoAndDeleteFollowTheHistoryAndTheSelection()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        QCOMPARE(host.Annotations(0), 1);
        QVERIFY(host.IsEnabled("Edit", "Undo") && !host.IsEnabled("Edit", "Redo"));
        QVERIFY(host.IsEnabled("Edit", "Delete")); // a new annotation is selected
        host.Entry("Edit", "Delete")->trigger();
        QCOMPARE(host.Annotations(0), 0);
        QVERIFY(!host.IsEnabled("Edit", "Delete"));
        host.Entry("Edit", "Undo")->trigger();
        QCOMPARE(host.Annotations(0), 1);
        host.Entry("Edit", "Undo")->trigger();
        QCOMPARE(host.Annotations(0), 0);
        QVERIFY(!host.IsEnabled("Edit", "Undo") && host.IsEnabled("Edit", "Redo"));
        host.Entry("Edit", "Redo")->trigger();
        QCOMPARE(host.Annotations(0), 1);
    }

    void theKeysOfAViewReachItOnceAndNotTheMenu()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        host.DrawRectangle(0);
        QCOMPARE(host.Annotations(0), 2);
        QVERIFY(host.View(0)->hasFocus());
        QSignalSpy viewUndo(host.View(0), &CImageView2D::signal_Undo);
        QSignalSpy menuUndo(host.Entry("Edit", "Undo"), &QAction::triggered);
        host.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(viewUndo.size(), 1);
        QCOMPARE(menuUndo.size(), 0);
        QCOMPARE(host.Annotations(0), 1); // one step, not two
        QSignalSpy viewCopy(host.View(0), &CImageView2D::signal_Copy);
        host.Key(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(viewCopy.size(), 1);
        QSignalSpy menuDelete(host.Entry("Edit", "Delete"), &QAction::triggered);
        host.View(0)->setFocus();
        host.Key(Qt::Key_Delete);
        QCOMPARE(menuDelete.size(), 0);
    }

    void theKeysOfTheMenusWorkWhileAViewHasTheFocus()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(host.View(0)->hasFocus());
        const QSize before = ImageSize(host);
        QVERIFY(before.isValid() && before.width() != before.height());
        host.Key(Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(ImageSize(host), before.transposed());
        QVERIFY(host.View(0)->hasFocus());
        host.Key(Qt::Key_4, Qt::ControlModifier);
        QCOMPARE(host.ShownViewers(), 4);
        host.Key(Qt::Key_F3);
        QVERIFY(host.Viewer(0)->Is3DShown());
        host.Key(Qt::Key_F2);
        QVERIFY(!host.Viewer(0)->Is3DShown());
        QTRY_VERIFY(host.View(0)->hasFocus());
    }

    void aKeyOfADisabledEntryDoesNothing()
    {
        Host host;
        QVERIFY(host.Show());
        QSignalSpy triggered(host.Entry("File", "Close Image"), &QAction::triggered);
        host.Key(Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(triggered.size(), 0);
    }

    void aMenuOpenedByKeysGivesTheFocusBackAndUndoActsWhereItWas()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.DrawRectangle(0);
        host.DrawRectangle(1);
        QVERIFY(host.View(1)->hasFocus());
        host.Key(Qt::Key_E, Qt::AltModifier);
        QTRY_VERIFY(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), 'u');
        QTRY_COMPARE(host.Annotations(1), 0);
        QCOMPARE(host.Annotations(0), 1);
        QVERIFY(host.View(1)->hasFocus());
    }

    void theToolBarNeverTakesTheFocus()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.DrawRectangle(1);
        QVERIFY(host.View(1)->hasFocus());
        auto* pBar = host.window.findChild<QToolBar*>();
        QVERIFY(pBar);
        auto* pUndo = qobject_cast<QToolButton*>(pBar->widgetForAction(host.Entry("Edit", "Undo")));
        QVERIFY(pUndo && pUndo->isVisible());
        QTRY_VERIFY(pUndo->isEnabled());
        QTest::mouseClick(host.window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          pUndo->mapTo(&host.window, pUndo->rect().center()));
        QCOMPARE(host.Annotations(1), 0);
        QVERIFY(host.View(1)->hasFocus());
        QTRY_VERIFY(!pUndo->isEnabled());
    }

    void undoActsInTheViewerThatHadTheFocusAlsoFromADock()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.DrawRectangle(0);
        host.DrawRectangle(1);
        QWidget* pElsewhere = host.window.findChild<QDockWidget*>(QStringLiteral("Log"))->widget();
        pElsewhere->setFocusPolicy(Qt::StrongFocus);
        pElsewhere->setFocus();
        QVERIFY(!host.View(1)->hasFocus());
        host.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(host.Annotations(1), 0);
        QCOMPARE(host.Annotations(0), 1);
    }

    void f6GoesRoundTheViewAndTheDocks()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.window.findChild<QDockWidget*>(QStringLiteral("Log"))->show();
        host.View(1)->setFocus();
        QStringList panes;
        for (int i = 0; i < 4; ++i) {
            host.Key(Qt::Key_F6);
            QString strPane = QStringLiteral("view");
            for (const auto* pDock : host.window.findChildren<QDockWidget*>())
                if (pDock->isAncestorOf(QApplication::focusWidget()))
                    strPane = pDock->objectName();
            panes << strPane;
        }
        QVERIFY(panes.contains(QStringLiteral("Tools")) && panes.contains(QStringLiteral("Log")));
        QVERIFY(panes.contains(QStringLiteral("view"))); // round
        host.View(1)->setFocus();
        host.Key(Qt::Key_F6);
        host.Key(Qt::Key_F6, Qt::ShiftModifier);
        QVERIFY(host.View(1)->hasFocus()); // and not another viewer's
    }

    void aDockIsShownAndHiddenByItsEntryAlsoWhenItWasClosedElsewhere()
    {
        Host host;
        QVERIFY(host.Show());
        auto* pDock = host.window.findChild<QDockWidget*>(QStringLiteral("Log"));
        const auto entry = [&] {
            return host.Entry({QStringLiteral("View"), QStringLiteral("Docks"), QStringLiteral("Log")});
        };
        QVERIFY(pDock->isHidden() && !entry()->isChecked());
        entry()->trigger();
        QVERIFY(pDock->isVisible() && entry()->isChecked());
        pDock->close(); // by its title
        QVERIFY(!entry()->isChecked());
    }

    void aReaderOfTheScreenTogglesAButtonOfTheToolBar()
    {
        Host host;
        QVERIFY(host.Show());
        auto* pBar = host.window.findChild<QToolBar*>();
        auto* pButton = pBar->widgetForAction(host.Entry("View", "Four Viewers (2x2)"));
        QAccessible::queryAccessibleInterface(pButton)->actionInterface()->doAction(
            QAccessibleActionInterface::toggleAction());
        QCOMPARE(host.ShownViewers(), 4);
    }

    void theLayoutEntriesShowWhichOneIsChosen()
    {
        Host host;
        QVERIFY(host.Show());
        const auto isChecked = [&](const char* pText) { return host.Entry("View", pText)->isChecked(); };
        QVERIFY(isChecked("One Viewer (1x1)"));
        host.Entry("View", "Four Viewers (2x2)")->trigger();
        QCOMPARE(host.ShownViewers(), 4);
        QVERIFY(isChecked("Four Viewers (2x2)") && !isChecked("One Viewer (1x1)"));
        host.Entry("View", "Two Viewers (2x1)")->trigger();
        QCOMPARE(host.ShownViewers(), 2);
        QVERIFY(isChecked("Two Viewers (2x1)") && !isChecked("Four Viewers (2x2)"));
    }

    void aDocumentIsPagedByTheMenu()
    {
        Host host;
        QVERIFY(host.Show({kDocument}));
        QVERIFY(!host.IsEnabled("View", "Previous Image") && host.IsEnabled("View", "Next Image"));
        host.Entry("View", "Next Image")->trigger();
        QVERIFY(host.IsEnabled("View", "Previous Image"));
    }

    void whatIsClosedInTheHiddenViewersIsNotTouched()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kDocument}));
        host.View(1)->setFocus();
        host.Entry("View", "One Viewer (1x1)")->trigger();
        host.Entry("File", "Close All Images")->trigger(); // the only viewer shown
        host.Entry("View", "Two Viewers (2x1)")->trigger();
        QCOMPARE(host.View(0)->GetImageUID(), 0xFFFFFFFFu);
        QVERIFY(host.View(1)->GetImageUID() != 0xFFFFFFFFu);
    }

    // Text wins over an image in the clipboard, and is not pasted.
    void textBesideAnImageIsNoReasonToPaste()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        auto* pData = new QMimeData;
        pData->setImageData(QImage(3, 2, QImage::Format_RGB32));
        QApplication::clipboard()->setMimeData(pData);
        QVERIFY(host.IsEnabled("Edit", "Paste"));
        auto* pBoth = new QMimeData;
        pBoth->setImageData(QImage(3, 2, QImage::Format_RGB32));
        pBoth->setText(QStringLiteral("words"));
        QApplication::clipboard()->setMimeData(pBoth);
        QVERIFY(!host.IsEnabled("Edit", "Paste"));
    }

private:
    static QSize ImageSize(const Host& host)
    {
        for (const QLabel* pLabel : host.Viewer(0)->findChildren<QLabel*>()) {
            // "[View-0][480x360x3x8]"
            const auto match =
                QRegularExpression(QStringLiteral("\\]\\[(\\d+)x(\\d+)x")).match(pLabel->text());
            if (match.hasMatch())
                return {match.captured(1).toInt(), match.captured(2).toInt()};
        }
        return {};
    }

    static constexpr std::pair<const char*, const char*> kNeedImage[] = {
        {"File", "Save As..."},  {"File", "Close Image"},  {"File", "Close All Images"}, {"Edit", "Copy"},
        {"Edit", "Rotate Left"}, {"Edit", "Rotate Right"}, {"View", "Fit to Window"},    {"View", "Go To..."},
    };
};

VANTOR_TEST_MAIN(tst_CMainWindowMenus)
#include "tst_CMainWindowMenus.moc"
