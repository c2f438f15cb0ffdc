// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CDesignerPlugin.h"

#include <VantorCommon/log/CLogView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QIcon>

namespace
{
template <class Widget> QWidget* Create(QWidget* pParent)
{
    return new Widget(pParent);
}

const SDesignerWidget kWidgets[] = {
    {"CImageViewer",
     "shell/viewer",
     "photo.png",
     "A viewer with its buttons and thumbnails",
     {480, 360},
     Create<CImageViewer>},
    {"CLogView", "log", "search.png", "The messages of the log as they come", {480, 160}, Create<CLogView>},
    {"CImageView3DEarth",
     "view3d",
     "3D.png",
     "A globe that is turned with the mouse",
     {320, 240},
     Create<CImageView3DEarth>},
    {"CToolBoxDockView",
     "shell/dock",
     "ruler.png",
     "The place of the tools of the active viewer",
     {240, 320},
     Create<CToolBoxDockView>},
    {"CPropertyDockView",
     "shell/dock",
     "selection.png",
     "The place of the properties of the active viewer",
     {240, 320},
     Create<CPropertyDockView>},
    {"CStatusBarDockView",
     "shell/dock",
     "zoomfit.png",
     "The place of the status line of the active viewer",
     {480, 32},
     Create<CStatusBarDockView>},
};

/// "CLogView" becomes "logView".
QString ObjectName(const char* pClass)
{
    QString strName = QString::fromLatin1(pClass + 1);
    strName[0] = strName[0].toLower();
    return strName;
}
} // namespace

CDesignerWidget::CDesignerWidget(const SDesignerWidget& sWidget, QObject* pParent)
    : QObject(pParent), m_sWidget(sWidget)
{
}

QString CDesignerWidget::name() const
{
    return QString::fromLatin1(m_sWidget.pClass);
}

QString CDesignerWidget::group() const
{
    return QStringLiteral("Vantor");
}

QString CDesignerWidget::toolTip() const
{
    return QString::fromLatin1(m_sWidget.pToolTip);
}

QString CDesignerWidget::whatsThis() const
{
    return toolTip();
}

QString CDesignerWidget::includeFile() const
{
    return QStringLiteral("<VantorCommon/%1/%2.h>").arg(QLatin1String(m_sWidget.pFolder), name());
}

QIcon CDesignerWidget::icon() const
{
    return QIcon(QStringLiteral(":/Image/") + QLatin1String(m_sWidget.pIcon));
}

/// False: the library fills a viewer and a dock when the program runs.
bool CDesignerWidget::isContainer() const
{
    return false;
}

QString CDesignerWidget::domXml() const
{
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\"><property name=\"geometry\">"
                          "<rect><x>0</x><y>0</y><width>%3</width><height>%4</height></rect>"
                          "</property></widget></ui>")
        .arg(name(), ObjectName(m_sWidget.pClass))
        .arg(m_sWidget.size.width())
        .arg(m_sWidget.size.height());
}

QWidget* CDesignerWidget::createWidget(QWidget* pParent)
{
    return m_sWidget.pCreate(pParent);
}

CDesignerPlugin::CDesignerPlugin(QObject* pParent) : QObject(pParent)
{
    for (const SDesignerWidget& sWidget : kWidgets)
        m_lstWidgets.append(new CDesignerWidget(sWidget, this));
}

QList<QDesignerCustomWidgetInterface*> CDesignerPlugin::customWidgets() const
{
    return m_lstWidgets;
}
