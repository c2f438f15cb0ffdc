// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QWidget>
#include <vector>

class QMenu;
class QPushButton;
class QToolButton;

/// Buttons in one row. Buttons without room become entries of the menu of a last button.
class CButtonRow : public QWidget
{
public:
    explicit CButtonRow(QWidget* pParent);

    /// Appends a button of fixed size, the same for all; the row owns it. Its menu entry has its tool tip and
    /// icon, and presses it.
    void Add(QPushButton* pButton);

    /// Gives a button of the row another place, counted from 0.
    void Move(QPushButton* pButton, int nPlace);

    /// The size with room for all buttons.
    QSize sizeHint() const override;
    /// The size with room for one button and the menu of the others.
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void PlaceAll();
    void Place(QWidget* pWidget, int nPlace);
    void FillMenu();

    std::vector<QPushButton*> m_vctButtons;
    QToolButton* m_pMore;
    QMenu* m_pMenu;
};
