// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QDialog>
#include <QString>
#include <vector>

class QAbstractItemDelegate;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QStandardItemModel;

/// The dialog of a processing tool: the choosers of the source viewer and of its region, and the sections
/// "Parameter", "Result", "Button" and "Message". A tool derives from it and fills the sections. It is shown
/// modeless, so that regions can be drawn meanwhile. The widgets belong to it. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessBaseDlg : public QDialog
{
    Q_OBJECT

public:
    explicit CImage2DProcessBaseDlg(QWidget* pParent);
    ~CImage2DProcessBaseDlg() override;

    /// Lists one entry for each cell of the registered centre, "Image View [0]" and so on; the chosen one
    /// stays chosen while it is there. Without a centre nothing changes.
    void ChangeImageViewNumber();

    /// The regions are listed by name, in the order given.
    virtual void SetSourceROITitle(const std::vector<QString>& vctNames);
    virtual void ClearSourceROI();
    virtual void AddSourceROI(const QString& name);
    /// The first entry of that name.
    virtual void DeleteSourceROI(const QString& name);
    virtual QString GetSourceImage() const;
    /// An index beyond the list is ignored; a negative one chooses no region.
    virtual void SetSourceROIIndex(int index);
    /// -1 when no region is chosen.
    virtual int GetSourceROIIndex() const;
    /// Empty when no region is chosen.
    virtual QString GetSourceROIName() const;
    /// Plain text.
    virtual void SetMessage(const QString& strMessage);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has chosen a viewer.
    void signal_ChangeSourceImageView(const QString& strTitle);

public Q_SLOTS:
    void slot_ChangeImageViewNumber();

protected:
    /// One row of the parameter tree.
    struct SParameter {
        QString strLabel;
        QString strValue;
    };

    /// Fills "Parameter" with a tree of two columns, label and value.
    /// @param pDelegate makes the editors of the values; it belongs to the caller and outlives the tree
    /// @return the model of the tree, which belongs to the dialog
    QStandardItemModel* AddParameterTree(const std::vector<SParameter>& vctRows,
                                         QAbstractItemDelegate* pDelegate);
    /// Fills "Button" with the button "Run", which no key but those on itself presses.
    QPushButton* AddRunButton();
    QGroupBox* ResultGroup() const { return m_pResultGroup; }

private:
    QWidget* CreateImageRow();
    QWidget* CreateParameterRow();
    void CreateMessage();

    QComboBox* m_pSourceImage = nullptr;
    QComboBox* m_pSourceROI = nullptr;
    /// Deliberate: the target choosers are there, but nothing fills or reads them; so they are greyed.
    QComboBox* m_pTargetImage = nullptr;
    QComboBox* m_pTargetROI = nullptr;
    QLabel* m_pMessage = nullptr;
    QGroupBox* m_pParameterGroup = nullptr;
    QGroupBox* m_pResultGroup = nullptr;
    QGroupBox* m_pButtonGroup = nullptr;
    QGroupBox* m_pMessageGroup = nullptr;
};
