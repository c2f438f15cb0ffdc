// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/viewer/CImageViewer.h>

#include <QIcon>
#include <QLabel>
#include <QListView>
#include <QPixmap>
#include <QPushButton>
#include <QSplitter>

/// The widgets inside a viewer, as a person finds them: buttons by their picture, labels by their place.
class ViewerParts
{
public:
    explicit ViewerParts(CImageViewer* pViewer) : m_pViewer(pViewer) {}

    QList<QPushButton*> Buttons() const { return m_pViewer->findChildren<QPushButton*>(); }

    QPushButton* Button(const QString& strIcon) const
    {
        for (QPushButton* pButton : Buttons())
            if (Picture(pButton->icon()) == Picture(QIcon(QStringLiteral(":/Image/") + strIcon)))
                return pButton;
        return nullptr;
    }

    QLabel* Title() const
    {
        for (QLabel* pLabel : m_pViewer->findChildren<QLabel*>())
            if (pLabel->styleSheet() == QStringLiteral("QLabel{color: green;}"))
                return pLabel;
        return nullptr;
    }

    /// The label beside the title.
    QLabel* Status() const
    {
        for (QLabel* pLabel : Title()->parentWidget()->findChildren<QLabel*>())
            if (pLabel != Title())
                return pLabel;
        return nullptr;
    }

    QListView* List() const { return m_pViewer->findChild<QListView*>(); }
    QSplitter* Splitter() const { return m_pViewer->findChild<QSplitter*>(); }

    QPixmap Thumbnail(int nRow) const
    {
        return List()->model()->index(nRow, 0).data(Qt::DecorationRole).value<QPixmap>();
    }
    QString Text(int nRow) const { return List()->model()->index(nRow, 0).data().toString(); }

private:
    static QImage Picture(const QIcon& icon) { return icon.pixmap(20, 20).toImage(); }

    CImageViewer* m_pViewer;
};
