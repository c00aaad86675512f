#include <gtest/gtest.h>

#include <fstream>

#include "settings/failure.h"
#include "settings/image.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "support/workspace_fixture.h"
#include "workspace/setting_file_commands.h"
#include "workspace/table_operations.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

/// What a scope takes for its length comes back however the scope ends.
using Scope_Guards = Workspace_Fixture;

/// "Scale %" answers any failure of its own; were Undo_Busy left set, every control would be dead from then
/// on.
TEST_F(Scope_Guards, A_Refresh_That_Fails_Leaves_The_Controls_Alive) {
  Show_Tab(main_tab::fuel, 0);
  scale_table_text.Set("50");
  view_hooks.show_values = [] { Fail_Overflow(); };
  Expect_Box("not a number");
  scale_table_Click();
  EXPECT_FALSE(Undo_Busy);
  {
    const Undo_Busy_Scope outer;
    EXPECT_THROW(Update_All(), Failure);
    EXPECT_TRUE(Undo_Busy) << "an outer fill goes on";
  }
  EXPECT_FALSE(Undo_Busy);
}

TEST_F(Scope_Guards, A_Load_That_Fails_On_The_Way_Leaves_Name_And_Description) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += " 7 \r\n";
  folder_.Write("other.kxs", bytes);
  txt_File_Description.Set("mine");
  const Byte_Image before = CardByte;
  int titles = 0;
  refresh_hooks.show_title = [&titles] {
    if (++titles == 1) Fail_Overflow();
  };
  ask_.Expect_Name("Open", folder_.Path() + "/other.kxs");
  EXPECT_THROW(File_open_Click(), Failure);
  EXPECT_EQ(card_data_file, "New1.kxs");
  EXPECT_EQ(Title_Text(), "New1.kxs");
  EXPECT_EQ(txt_File_Description.Text(), "mine");
  EXPECT_EQ(CardByte, before);
}

}  // namespace
}  // namespace kx
