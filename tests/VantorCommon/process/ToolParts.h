// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>

#include <QApplication>
#include <QByteArray>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStringList>
#include <QTreeView>
#include <QWindow>
#include <QtTest/QtTest>
#include <memory>

/// Shows a window and waits until it has the focus itself: QTest::qWaitForWindowActive is content with a
/// parent or a child that has it.
/// The window manager may drop a request that crosses another one, so it is asked again.
inline bool Activate(QWidget& window)
{
    window.show();
    return QTest::qWaitFor([&] {
        const bool bActive = QApplication::activeWindow() == &window &&
                             QGuiApplication::focusWindow() == window.windowHandle();
        if (!bActive)
            window.activateWindow();
        return bActive;
    });
}

/// The widgets of a tool's dialog as a person finds them, and what a person does with them.
class ToolParts
{
public:
    explicit ToolParts(CImage2DProcessBaseDlg& dlg) : m_dlg(dlg) {}

    QGroupBox* Group(const char* szTitle) const
    {
        for (QGroupBox* pGroup : m_dlg.findChildren<QGroupBox*>())
            if (pGroup->title() == QLatin1String(szTitle))
                return pGroup;
        return nullptr;
    }
    /// The chooser beside the label with that text.
    QComboBox* Chooser(const char* szLabel) const
    {
        for (QLabel* pLabel : m_dlg.findChildren<QLabel*>())
            if (pLabel->text() == QLatin1String(szLabel))
                if (auto* pCombo = qobject_cast<QComboBox*>(pLabel->buddy()))
                    return pCombo;
        return nullptr;
    }
    QStringList Entries(const char* szLabel) const
    {
        QStringList lstEntries;
        const QComboBox* pCombo = Chooser(szLabel);
        for (int i = 0; i < pCombo->count(); ++i)
            lstEntries << pCombo->itemText(i);
        return lstEntries;
    }
    QString Message() const { return Group("Message")->findChild<QLabel*>()->text(); }
    QPushButton* RunButton() const { return Group("Button")->findChild<QPushButton*>(); }
    QTreeView* Tree() const { return Group("Parameter")->findChild<QTreeView*>(); }
    QStandardItemModel* Rows() const { return qobject_cast<QStandardItemModel*>(Tree()->model()); }
    QString Cell(int nRow, int nColumn) const { return Rows()->item(nRow, nColumn)->text(); }

    bool Show() { return Activate(m_dlg); }
    void Click(QWidget* pWidget, const QPoint& pos)
    {
        QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, pWidget->mapTo(&m_dlg, pos));
    }
    void ClickRun() { Click(RunButton(), RunButton()->rect().center()); }
    QPoint CellCentre(int nColumn, int nRow = 0) const
    {
        return Tree()->visualRect(Rows()->index(nRow, nColumn)).center();
    }
    /// Opens the editor of a cell by a double click; null when none opens.
    QWidget* OpenEditor(int nColumn, int nRow = 0)
    {
        QWidget* pViewport = Tree()->viewport();
        Click(pViewport, CellCentre(nColumn, nRow));
        QTest::mouseDClick(Window(), Qt::LeftButton, Qt::NoModifier,
                           pViewport->mapTo(&m_dlg, CellCentre(nColumn, nRow)));
        return Editor();
    }
    QWidget* Editor() const
    {
        for (QWidget* pWidget :
             Tree()->viewport()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            if (pWidget->isVisible())
                return pWidget;
        return nullptr;
    }
    /// Keys go to whatever has the focus in the dialog.
    void Key(Qt::Key key) { QTest::keyClick(Window(), key); }
    void Type(const QString& strText)
    {
        for (const QChar& c : strText)
            QTest::keyClick(Window(), c.toLatin1());
    }
    QWindow* Window() const { return m_dlg.windowHandle(); }

private:
    CImage2DProcessBaseDlg& m_dlg;
};

/// All pixels of an image, row by row, without what pads the rows.
inline QByteArray PixelsOf(const Vantor::Algorithms::CImage& image)
{
    QByteArray bytes;
    const int nRow = image.GetWidth() * image.GetChannel() * image.GetBitDepth() / 8;
    for (int y = 0; y < image.GetHeight(); ++y)
        bytes.append(reinterpret_cast<const char*>(image.GetRows()[y]), nRow);
    return bytes;
}

/// The pixels after a call of the core library on a copy.
template <class Call> QByteArray PixelsAfter(const Vantor::Algorithms::CImage& image, Call call)
{
    Vantor::Algorithms::CImage copy;
    copy.CopyFrom(&image);
    call(copy);
    return PixelsOf(copy);
}
