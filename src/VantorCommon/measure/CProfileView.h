// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/LineProfile.h>
#include <VantorCommon/measure/CPlotPanel.h>

class QLabel;
class QSpinBox;

/// A panel with the profile of a line: the values along it, of each channel and of the greys, averaged over a
/// width that somebody chooses. A CProfileCtrl fills it. It belongs to its Qt parent. GUI thread only.
class VANTORCOMMON_EXPORT CProfileView : public CPlotPanel
{
    Q_OBJECT

public:
    /// Says that a line is to be selected, until it gets a profile.
    explicit CProfileView(QWidget* pParent = nullptr);
    ~CProfileView() override;

    /// Shows a profile.
    /// @param profile  one without values shows what is to be done
    /// @param strUnit  of its positions
    /// @param strName  of the line
    void SetProfile(Vantor::Algorithms::SLineProfile profile, const QString& strUnit, const QString& strName);
    /// The number of parallel lines that are averaged, see SProfileOptions.
    int GetLineWidth() const;

Q_SIGNALS:
    void signal_ChangeLineWidth(); ///< somebody has chosen another width

protected:
    void ShowAll() override;
    QString HoverText(int nIndex) const override;

private:
    std::vector<double> ValuesOf(int nChannel) const;

    QLabel* m_pWidthLabel;
    QSpinBox* m_pWidth;
    Vantor::Algorithms::SLineProfile m_profile;
    QString m_strUnit;
    QString m_strName;
};
