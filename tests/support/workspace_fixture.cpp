#include "support/workspace_fixture.h"

#include <filesystem>

#include "platform/seams.h"
#include "settings/session.h"
#include "support/test_folders.h"
#include "workspace/start_up.h"
#include "workspace/tables.h"
#include "workspace/update_views.h"

namespace kx {

void Workspace_Fixture::SetUp() {
  platform::seams = {};
  platform::seams.clock = &clock_;
  platform::seams.event_loop = &loop_;
  platform::seams.ask = &ask_;
  platform::seams.serial_port = &port_;
  platform::seams.desktop = &desktop_;
  platform::seams.port_devices = &devices_;
  std::filesystem::copy(test::Shipped_Data(), folder_.Path(), std::filesystem::copy_options::recursive);
  Prepare_Start();
  start_dir = folder_.Path() + "/";
  Install_Refresh_Hooks();
  Load_Event();
}

void Workspace_Fixture::TearDown() {
  Prepare_Start();
  platform::seams = {};
}

void Workspace_Fixture::Show_Tab(int tab, int sub_tab) {
  shown_tabs.sstab_Main = tab;
  for (const Table_Row& row : table_rows) {
    if (row.tab == tab) shown_tabs.*row.sub_tabs = sub_tab;
  }
}

}  // namespace kx
