// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

/// The description of one class for Qt Designer, and the function that makes a widget of it.
struct SDesignerWidget {
    const char* pClass;
    const char* pFolder; ///< of the header, below VantorCommon/
    const char* pIcon;   ///< a resource of libVantorCommon, below :/Image/
    const char* pToolTip;
    QSize size; ///< of a newly dropped widget, in pixels
    QWidget* (*pCreate)(QWidget* pParent);
};

/// One entry of Qt Designer's widget box. It shows the class as a form builds it: with only a parent, so a
/// viewer has no image views before a controller fills it.
class CDesignerWidget : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    CDesignerWidget(const SDesignerWidget& sWidget, QObject* pParent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QString domXml() const override;
    QWidget* createWidget(QWidget* pParent) override;

private:
    const SDesignerWidget& m_sWidget;
};

/// All entries; Qt Designer makes and owns the collection.
class CDesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")

public:
    explicit CDesignerPlugin(QObject* pParent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

private:
    QList<QDesignerCustomWidgetInterface*> m_lstWidgets;
};
