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

/// The dialog of a processing tool: the choosers of the source viewer and of its region, a button that
/// chooses no region, which means the whole image, and the sections "Parameter", "Result", "Button" and
/// "Message". A tool derives from it and fills the sections. It is modeless, so that the user can draw
/// regions meanwhile. It owns its widgets. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessBaseDlg : public QDialog
{
    Q_OBJECT

public:
    /// Starts with empty sections and the registered centre's viewers in the chooser. The parent, usually the
    /// centre view or the host's window, owns the dialog.
    explicit CImage2DProcessBaseDlg(QWidget* pParent);
    ~CImage2DProcessBaseDlg() override;

    /// Lists one entry for each cell of the registered centre, "Image View [0]" and so on; the chosen entry
    /// stays chosen while it exists. Does nothing without a centre.
    void ChangeImageViewNumber();

    /// Replaces the list of regions by these names, in this order, and chooses the first.
    virtual void SetSourceROITitle(const std::vector<QString>& vctNames);
    /// Empties the list of regions.
    virtual void ClearSourceROI();
    /// Appends a region; chooses it if the list was empty.
    virtual void AddSourceROI(const QString& name);
    /// Removes the first entry of that name, if there is one.
    virtual void DeleteSourceROI(const QString& name);
    /// The name of the chosen viewer, "Image View [0]" and so on; empty when there is none.
    virtual QString GetSourceImage() const;
    /// Chooses a region. Ignores an index beyond the list; a negative index chooses none.
    virtual void SetSourceROIIndex(int index);
    /// The chosen region, 0 for the first; -1 when there is none.
    virtual int GetSourceROIIndex() const;
    /// The name of the chosen region; empty when there is none, which means the whole image.
    virtual QString GetSourceROIName() const;
    /// Chooses a viewer by its name, without signal_ChangeSourceImageView; ignores a name that is not listed.
    void SetSourceImage(const QString& strTitle);
    /// Shows a text in the section "Message", as plain text.
    virtual void SetMessage(const QString& strMessage);

    /// 600 x 300 pixels.
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has chosen a viewer, given by its name.
    void signal_ChangeSourceImageView(const QString& strTitle);
    /// The user clicked the button "Run".
    void signal_Run();

public Q_SLOTS:
    /// The grid of the centre has changed: ChangeImageViewNumber.
    void slot_ChangeImageViewNumber();

protected:
    /// One row of the parameter tree.
    struct SParameter {
        QString strLabel; ///< first column
        QString strValue; ///< second column, edited by the delegate
    };

    /// Fills "Parameter" with a tree of two columns, label and value. Call it once. Labels are editable, too.
    /// @param vctRows    from top to bottom
    /// @param pDelegate  makes the editors of the values; the caller owns it, and it outlives the tree
    /// @return the model of the tree, which the dialog owns; it emits dataChanged for every edit until the
    ///         dialog's destruction begins
    QStandardItemModel* AddParameterTree(const std::vector<SParameter>& vctRows,
                                         QAbstractItemDelegate* pDelegate);
    /// Fills "Button" with the button "Run", whose click emits signal_Run; keys press it only while it has
    /// the focus. Call it once; the dialog owns the button.
    QPushButton* AddRunButton();
    /// The section "Result", without a layout, for a tool to fill.
    QGroupBox* ResultGroup() const { return m_pResultGroup; }

private:
    QWidget* CreateImageRow();
    QWidget* CreateParameterRow();
    void CreateMessage();

    QComboBox* m_pSourceImage = nullptr;
    QComboBox* m_pSourceROI = nullptr;
    /// Deliberate: the target choosers exist, but nothing fills or reads them, so they are disabled.
    QComboBox* m_pTargetImage = nullptr;
    QComboBox* m_pTargetROI = nullptr;
    QLabel* m_pMessage = nullptr;
    QGroupBox* m_pParameterGroup = nullptr;
    QGroupBox* m_pResultGroup = nullptr;
    QGroupBox* m_pButtonGroup = nullptr;
    QGroupBox* m_pMessageGroup = nullptr;
};
