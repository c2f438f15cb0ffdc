// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QBrush>
#include <QColor>
#include <QPointer>
#include <QWidget>

class CImageView2DGeometryModel;
class QCheckBox;
class QDoubleSpinBox;
class QGroupBox;
class QPushButton;
class QTimer;

/// The place for the properties of annotations: a panel, at least 200 pixels wide, bound to the model, empty
/// until it is made editable. Then it shows the colour, the width and the fill of the first selected
/// annotation, and asks by signals to change those of all selected ones. The model is not owned, may be null
/// and may be destroyed first. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DGeometryPropertyView : public QWidget
{
    Q_OBJECT

public:
    /// Follows the model's changes of single objects.
    explicit CImageView2DGeometryPropertyView(CImageView2DGeometryModel* pModel, QWidget* pParent = nullptr);
    ~CImageView2DGeometryPropertyView() override;

    /// Shows or hides the editors; without them at first.
    void SetEditable(bool bEditable);

Q_SIGNALS:
    /// @{
    /// The user has chosen a colour of the outline, its width (1 to 50 widget pixels) or a fill, which may be
    /// none, for what is selected.
    void signal_ChangeColor(const QColor& color);
    void signal_ChangeWidth(double dblWidth);
    void signal_ChangeFill(const QBrush& brush);
    /// @}

public Q_SLOTS:
    /// Updates the values after the current event; does nothing while the panel is not editable.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);

private:
    void CreateEditors();
    void ChooseColor(const QColor& color, bool bAlpha,
                     void (CImageView2DGeometryPropertyView::*pTell)(const QColor&));
    void TellFill(const QColor& color);
    void ShowValues();

    QPointer<CImageView2DGeometryModel> m_pModel;
    QGroupBox* m_pEditors = nullptr; ///< null until they are asked for
    QPushButton* m_pColor = nullptr;
    QDoubleSpinBox* m_pWidth = nullptr;
    QCheckBox* m_pFilled = nullptr;
    QPushButton* m_pFill = nullptr;
    QTimer* m_pShowLater = nullptr;
    QColor m_color;
    QColor m_fill; ///< the current fill, or the one with which a fill would begin
};
