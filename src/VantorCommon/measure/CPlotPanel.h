// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <QWidget>
#include <functional>

class CPlotView;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QToolButton;
struct SPlot;

/// A panel around a plot: a choice of channels, buttons that copy and save, a text below, and the value under
/// the mouse. It belongs to its Qt parent. GUI thread only.
class VANTORCOMMON_EXPORT CPlotPanel : public QWidget
{
    Q_OBJECT

public:
    /// Another text than an English one.
    using Translate = std::function<QString(const QString& strText)>;

    ~CPlotPanel() override;

    CPlotView* GetPlot() const { return m_pPlot; } ///< the plot; it belongs to the panel
    /// Other texts than English ones. Tables stay in English.
    void SetTexts(const Translate& translate);

public Q_SLOTS:
    /// @{
    /// Put the plot on the clipboard: as a picture on white paper, as a table of values with tabs.
    void slot_CopyPicture();
    void slot_CopyValues();
    /// @}

Q_SIGNALS:
    /// The plot shall be saved as a picture or as a table.
    void signal_Save();

protected:
    /// Without a plot.
    explicit CPlotPanel(QWidget* pParent);

    /// What it is about has changed, or the texts.
    virtual void ShowAll() = 0;
    /// What stands under the mouse.
    virtual QString HoverText(int nIndex) const = 0;
    /// The text in the language of the user.
    QString Text(const char* pText) const;
    /// Appends a control to the row above the plot, before its buttons; the panel owns it then.
    void AddToBar(QWidget* pControl);
    /// Offers the choices for an image of so many channels, if they are others.
    void OfferChannels(int nChannels);
    /// The chosen one of SPlotChannels' choices.
    QString GetChannel() const;
    /// Shows a plot and a text.
    /// @param sPlot    without series: an empty one
    /// @param strInfo  lines of text below
    void ShowPlot(SPlot sPlot, const QString& strInfo);

private:
    void ShowHover(int nIndex);
    void ShowTexts();

    QHBoxLayout* m_pBar;
    QComboBox* m_pChannels;
    QWidget* m_pLastControl; ///< of the bar, before the buttons
    QToolButton* m_pCopy;
    QToolButton* m_pSave;
    CPlotView* m_pPlot;
    QLabel* m_pInfo;
    QLabel* m_pHover;
    Translate m_translate;
    int m_nChannels = 0;
};
