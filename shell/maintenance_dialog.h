#pragma once

#include "shell/company_file.h"
#include "shell/cost_codes.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;

namespace veldran::shell {

/// Maintenance of one cost account or cost item: its description and its kind, or the whole code when it does
/// not exist yet. What cannot be saved is said in the window, which then stays open with everything typed.
class MaintenanceDialog final : public QDialog {
public:
    /// \param typed the code as the field holds it; empty to create one
    /// \throws AdoError when the code cannot be read
    MaintenanceDialog(CostCodes codes, services::CodeStructure structure, const std::string& typed,
                      const UserRights& rights, QWidget* parent);

    void accept() override;

private:
    void build(const QString& chart);
    void buildRefusal();
    void addKinds(QFormLayout& form);
    void fill(const CostCode& code);
    void allow(const UserRights& rights);
    QString noun() const;
    QString note() const;
    CostCode filledIn() const;
    void followGroup();
    void refuse(const QString& text, QWidget* field);
    QWidget* fieldOf(CostCodeObjection::Place place) const;

    CostCodes codes_;
    services::CodeStructure structure_;
    std::optional<CostCode> stored_; ///< as it was read; none while it is to be created
    bool foreign_ = false;           ///< the code asked for is reserved to another company
    QFormLayout* fields_ = nullptr;
    QLineEdit* code_ = nullptr;
    QLineEdit* description_ = nullptr;
    QComboBox* kind_ = nullptr; ///< nullptr for cost items
    QCheckBox* group_ = nullptr;
    QCheckBox* reserved_ = nullptr;
    QLabel* note_ = nullptr;
    QFrame* refusalPanel_ = nullptr;
    QLabel* refusal_ = nullptr;
    QPushButton* ok_ = nullptr;
};

} // namespace veldran::shell
