#include "workspace/panels/Ignition_Panel.h"

#include "widgets/beside_or_below.h"
#include "workspace/view_hooks.h"

namespace kx {

Ignition_Panel::Ignition_Panel(Control_Index& index, QWidget* parent)
    : Tables_Panel("SSTab_Ignition", parent) {
  Table_Page* load = Add_Page(Table::ignition_load, {Chart_Id::IgMapChart});
  load_help_ = load->Add_Help("Label41");
  auto* base = new Control_Group("Ignition_Load_Base_Frame", "Base ignition load", index);
  base->Choice("ig_pos_combo");
  base->Choice("ig_neg_combo");
  auto* retard = new Control_Group("Retard_Frame", "Retard", index);
  retard->Scalar("HScroll1");
  retard->Choice("max_ret");
  retard->Choice("AR_Enable");
  load->Add_Below(new Beside_Or_Below(base, retard));

  Table_Page* rpm = Add_Page(Table::ignition_rpm, {Chart_Id::IgRPMChart});
  rpm_help_ = Named_Text("Label_IG_RPM");
  rpm_normal_ = Plain_Frame("Frame_Ignition_RPM_normal", rpm_help_);
  rpm_maf_limit_ = Plain_Frame(
      "Frame_IG_RPM_MAFSIM", Named_Text("Label_IG_RPM_MAFSIM",
                                        "Only the first value in Ignition RPM table can be changed, and sets "
                                        "the ignition for all RPM's"));
  rpm->Add_Above(rpm_normal_);
  rpm->Add_Above(rpm_maf_limit_);
}

void Ignition_Panel::Show_Layout() {
  const View_State view_state = View_Of_Tune();
  load_help_->setText(QString::fromStdString(view_state.Label41));
  rpm_help_->setText(QString::fromStdString(view_state.Label_IG_RPM));
  rpm_normal_->setVisible(!view_state.Frame_IG_RPM_MAFSIM);
  rpm_maf_limit_->setVisible(view_state.Frame_IG_RPM_MAFSIM);
}

}  // namespace kx
