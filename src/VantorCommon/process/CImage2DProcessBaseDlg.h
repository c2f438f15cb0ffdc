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
/// chooses no region, which is the whole image, and the sections "Parameter", "Result", "Button" and
/// "Message". A tool derives from it and fills the sections. It is shown modeless, so that regions can be
/// drawn meanwhile. The widgets belong to it. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessBaseDlg : public QDialog
{
    Q_OBJECT

public:
    /// With empty sections, and the registered centre's viewers to choose from. The parent, usually the
    /// centre view or the host's window, owns the dialog.
    explicit CImage2DProcessBaseDlg(QWidget* pParent);
    ~CImage2DProcessBaseDlg() override;

    /// Lists one entry for each cell of the registered centre, "Image View [0]" and so on; the chosen one
    /// stays chosen while it is there. Without a centre nothing changes.
    void ChangeImageViewNumber();

    /// Lists the regions by name, in the order given, in place of those before; the first one is chosen.
    virtual void SetSourceROITitle(const std::vector<QString>& vctNames);
    /// Takes every region off the list.
    virtual void ClearSourceROI();
    /// Appends a region; the first one of a list is chosen.
    virtual void AddSourceROI(const QString& name);
    /// Removes the first entry of that name, if there is one.
    virtual void DeleteSourceROI(const QString& name);
    /// The name of the chosen viewer, "Image View [0]" and so on; empty when there is none.
    virtual QString GetSourceImage() const;
    /// Chooses a region. An index beyond the list is ignored; a negative one chooses none.
    virtual void SetSourceROIIndex(int index);
    /// The chosen region, 0 for the first; -1 when there is none.
    virtual int GetSourceROIIndex() const;
    /// The name of the chosen region; empty when there is none, and then the whole image is processed.
    virtual QString GetSourceROIName() const;
    /// Chooses a viewer by its name, without signal_ChangeSourceImageView; a name that is not listed is
    /// ignored.
    void SetSourceImage(const QString& strTitle);
    /// Shows a text in the section "Message", as plain text.
    virtual void SetMessage(const QString& strMessage);

    /// 600 x 300 pixels.
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has chosen a viewer, given by its name.
    void signal_ChangeSourceImageView(const QString& strTitle);
    /// The button "Run" was clicked.
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

    /// Fills "Parameter" with a tree of two columns, label and value. Called once. Labels can be edited too.
    /// @param vctRows    from top to bottom
    /// @param pDelegate  makes the editors of the values; it belongs to the caller and outlives the tree
    /// @return the model of the tree, which belongs to the dialog; its dataChanged tells of every edit, and
    ///         no more while the dialog is being destroyed
    QStandardItemModel* AddParameterTree(const std::vector<SParameter>& vctRows,
                                         QAbstractItemDelegate* pDelegate);
    /// Fills "Button" with the button "Run", whose click is signal_Run and which no key but those on itself
    /// presses. Called once; the button belongs to the dialog.
    QPushButton* AddRunButton();
    /// The section "Result", without a layout, for what a tool has to show.
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
