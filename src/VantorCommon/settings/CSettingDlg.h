// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QDialog>
#include <QVariant>
#include <map>

class QFormLayout;
class QSpinBox;
class QTabWidget;

/// The "Settings" dialog: tabs of editors, each of which carries the key of its setting as its object name.
/// It announces what the user enters and shows the settings of the process; the setting controller stores
/// them.
///
/// Deliberate: the two boxes have no effect on documents, for their loader reads other keys (see
/// CSettingManager). They store what the user enters and show it again, also after the next start.
///
/// Deliberate: an edit reaches the file only; the settings of this process keep the old value until the next
/// start. So a box whose edit was stored goes on showing it, until the setting itself changes.
class VANTORCOMMON_EXPORT CSettingDlg : public QDialog
{
    Q_OBJECT

public:
    /// With the tab "General", not yet showing the settings: see UpdateParameter. GUI thread only.
    explicit CSettingDlg(QWidget* pParent = nullptr);

    /// Makes the tab "General". The constructor calls it; a second call does nothing.
    void CreateView();

    /// Adds a tab of another part of the program and takes ownership of the page. To take part in storing, an
    /// editor on it has its key as object name and is connected to the slot of its type. A null page adds
    /// nothing.
    void AddSettingTab(QWidget* pPage, const QString& strTitle);

    /// Shows the settings in the boxes of the tab "General", without announcing it. It leaves alone the box
    /// whose own change is being announced, and one whose change was announced and followed by this call
    /// (stored) as long as the setting itself stays the same.
    void UpdateParameter();

    /// @{
    /// What the two boxes show, in dots per inch, 0 to 9999.
    int GetGeneralPDFResolutionX() const;
    int GetGeneralPDFResolutionY() const;
    /// @}

public Q_SLOTS:
    /// @{
    /// Announces the sender's value under the sender's object name; nothing for a sender without one.
    void slot_ChangeValueInt(int nValue);
    void slot_ChangeValueDouble(double dblValue);
    void slot_ChangeValueString(const QString& strValue);
    /// @}

Q_SIGNALS:
    /// A value to store: entered by the user, or changed in the settings of the process (which are connected
    /// to this very signal).
    void signal_UpdateSetingParameter(const QString& strKey, const QVariant& var);

private:
    QSpinBox* AddResolution(QFormLayout* pRows, const QString& strLabel, const QString& strKey);
    void Announce(const QVariant& value);
    void ShowSetting(QSpinBox* pBox);

    QTabWidget* m_pTabs;
    QSpinBox* m_pResolutionX = nullptr;
    QSpinBox* m_pResolutionY = nullptr;
    QObject* m_pAnnouncing = nullptr;    ///< the editor whose change is being announced
    std::map<QObject*, int> m_mapStored; ///< what the setting of a box was when the box's edit was stored
};
