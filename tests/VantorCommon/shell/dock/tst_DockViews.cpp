// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/dock/CToolParameterView.h>
#include <VantorCommon/shell/dock/CViewParameterView.h>

#include <QApplication>
#include <functional>

using MakeWidget = std::function<QWidget*(QWidget*)>;
Q_DECLARE_METATYPE(MakeWidget)

namespace
{
template <class T> void AddRow(const char* pName)
{
    QTest::newRow(pName) << MakeWidget([](QWidget* pParent) { return new T(pParent); })
                         << QString::fromLatin1(pName);
}
} // namespace

/// The five empty containers: three docks, two pages.
class tst_DockViews : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDockIsAnEmptyScrollAreaThatResizesItsWidget_data()
    {
        QTest::addColumn<MakeWidget>("make");
        QTest::addColumn<QString>("strName");
        AddRow<CToolBoxDockView>("CToolBoxDockView");
        AddRow<CPropertyDockView>("CPropertyDockView");
        AddRow<CStatusBarDockView>("CStatusBarDockView");
    }

    void aDockIsAnEmptyScrollAreaThatResizesItsWidget()
    {
        QFETCH(MakeWidget, make);
        QFETCH(QString, strName);
        QWidget parent;
        const auto* pDock = qobject_cast<QScrollArea*>(make(&parent));
        QVERIFY(pDock);
        QCOMPARE(QString::fromLatin1(pDock->metaObject()->className()), strName);
        QCOMPARE(pDock->parentWidget(), &parent);
        QVERIFY(pDock->widgetResizable());
        QVERIFY(!pDock->widget());
        const QScrollArea plain;
        QCOMPARE(pDock->focusPolicy(), plain.focusPolicy());
        QCOMPARE(pDock->frameStyle(), plain.frameStyle());
    }

    void aPanelSetInADockFillsIt()
    {
        CToolBoxDockView dock;
        auto* pPanel = new QWidget;
        dock.resize(300, 200);
        dock.setWidget(pPanel);
        dock.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dock));
        QTRY_COMPARE(pPanel->size(), dock.viewport()->size());
    }

    void aPageHasNoContentOfItsOwn_data()
    {
        QTest::addColumn<MakeWidget>("make");
        QTest::addColumn<QString>("strName");
        AddRow<CToolParameterView>("CToolParameterView");
        AddRow<CViewParameterView>("CViewParameterView");
    }

    void aPageHasNoContentOfItsOwn()
    {
        QFETCH(MakeWidget, make);
        QFETCH(QString, strName);
        QWidget parent;
        const QWidget* pPage = make(&parent);
        QCOMPARE(QString::fromLatin1(pPage->metaObject()->className()), strName);
        QCOMPARE(pPage->metaObject()->superClass(), &QWidget::staticMetaObject);
        QCOMPARE(pPage->parentWidget(), &parent);
        QVERIFY(pPage->children().isEmpty());
    }
};

VANTOR_TEST_MAIN(tst_DockViews)
#include "tst_DockViews.moc"
