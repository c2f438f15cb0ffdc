// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"
#include "ui_AllWidgets.h"

#include <QDir>
#include <QPluginLoader>
#include <QXmlStreamReader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <memory>

namespace
{
struct SRow {
    const char* pClass;
    const char* pInclude;
    const char* pObjectName;
};

const SRow kRows[] = {
    {"CImageViewer", "VantorCommon/shell/viewer/CImageViewer.h", "imageViewer"},
    {"CLogView", "VantorCommon/log/CLogView.h", "logView"},
    {"CImageView3DEarth", "VantorCommon/view3d/CImageView3DEarth.h", "imageView3DEarth"},
    {"CToolBoxDockView", "VantorCommon/shell/dock/CToolBoxDockView.h", "toolBoxDockView"},
    {"CPropertyDockView", "VantorCommon/shell/dock/CPropertyDockView.h", "propertyDockView"},
    {"CStatusBarDockView", "VantorCommon/shell/dock/CStatusBarDockView.h", "statusBarDockView"},
};

QWidget* FindWidget(QWidget& form, const char* pClass, const char* pObjectName)
{
    auto* pWidget = form.findChild<QWidget*>(QLatin1String(pObjectName));
    return pWidget && pWidget->inherits(pClass) ? pWidget : nullptr;
}
} // namespace

class tst_CDesignerPlugin : public QObject
{
    Q_OBJECT

private:
    QPluginLoader m_loader{QStringLiteral(VANTOR_DESIGNER)};
    QList<QDesignerCustomWidgetInterface*> m_lstWidgets;

    QDesignerCustomWidgetInterface* Find(const char* pClass) const
    {
        for (auto* pWidget : m_lstWidgets)
            if (pWidget->name() == QLatin1String(pClass))
                return pWidget;
        return nullptr;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
        auto* pPlugin = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(m_loader.instance());
        QVERIFY(pPlugin);
        m_lstWidgets = pPlugin->customWidgets();
    }

    void itOffersTheSixWidgetsAndNoOthers() { QCOMPARE(m_lstWidgets.size(), int(std::size(kRows))); }

    void aWidgetSaysHowItIsIncludedAndWritten_data()
    {
        QTest::addColumn<int>("nRow");
        for (int i = 0; i < int(std::size(kRows)); ++i)
            QTest::newRow(kRows[i].pClass) << i;
    }
    void aWidgetSaysHowItIsIncludedAndWritten()
    {
        QFETCH(int, nRow);
        const SRow& row = kRows[nRow];
        const auto* pEntry = Find(row.pClass);
        QVERIFY(pEntry);
        QCOMPARE(pEntry->group(), QStringLiteral("Vantor"));
        QCOMPARE(pEntry->includeFile(), QStringLiteral("<%1>").arg(QLatin1String(row.pInclude)));
        QVERIFY(QFile::exists(QStringLiteral(VANTOR_SOURCE "/src/") + QLatin1String(row.pInclude)));
        QVERIFY(!pEntry->toolTip().isEmpty());
        QVERIFY(!pEntry->whatsThis().isEmpty());
        QVERIFY(!pEntry->isContainer());
        QCOMPARE(pEntry->icon().pixmap(22, 22).isNull(), false);

        QXmlStreamReader xml(pEntry->domXml());
        QVERIFY(xml.readNextStartElement());
        QCOMPARE(xml.name().toString(), QStringLiteral("ui"));
        QVERIFY(xml.readNextStartElement());
        QCOMPARE(xml.attributes().value(QStringLiteral("class")).toString(), QLatin1String(row.pClass));
        QCOMPARE(xml.attributes().value(QStringLiteral("name")).toString(), QLatin1String(row.pObjectName));
        while (!xml.atEnd())
            xml.readNext();
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    }

    void aWidgetIsCreatedAndShown_data() { aWidgetSaysHowItIsIncludedAndWritten_data(); }
    void aWidgetIsCreatedAndShown()
    {
        QFETCH(int, nRow);
        auto* pEntry = Find(kRows[nRow].pClass);
        QVERIFY(pEntry);
        QWidget form;
        form.resize(640, 480);
        QWidget* pWidget = pEntry->createWidget(&form);
        QVERIFY(pWidget);
        QCOMPARE(pWidget->parentWidget(), &form);
        QCOMPARE(pWidget->metaObject()->className(), kRows[nRow].pClass);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QVERIFY(pWidget->isVisible());
    }

    void aFormWithAllOfThemIsCompiledAndShown()
    {
        QWidget form;
        Ui::AllWidgets ui;
        ui.setupUi(&form);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        for (const SRow& row : kRows) {
            const QWidget* pWidget = FindWidget(form, row.pClass, row.pObjectName);
            QVERIFY2(pWidget, row.pClass);
            QVERIFY2(pWidget->isVisible(), row.pClass);
        }
        QCOMPARE(ui.imageViewer->GetViewID(), 0);
        QCOMPARE(ui.imageViewer->GetCurrentImageUID(), 0xFFFFFFFFu);
    }

    void aViewerThatAFormHasRenamedStillShowsItsFocus()
    {
        CImageViewer viewer;
        viewer.setObjectName(QStringLiteral("imageViewer"));
        viewer.show();
        viewer.activateWindow();
        viewer.setFocus();
        QTRY_VERIFY(viewer.hasFocus());
        QTRY_VERIFY(viewer.styleSheet().startsWith(QStringLiteral("#imageViewer {")));
    }
};

VANTOR_TEST_MAIN(tst_CDesignerPlugin)
#include "tst_CDesignerPlugin.moc"
