#pragma once

namespace kx {

/// Connects the refreshes that the lower subsystems ask for (settings/refresh.h) with the views of this
/// subsystem. Called once at start, before the load event.
void Install_Refresh_Hooks();

/// The tab on show has changed by the user: prepares its limits and the table tools.
void Shown_Tab_Changed();

/// The user has changed the tab of SSTab_Communication; kept in the configuration.
void Communication_Tab_Changed(int tab);

/// Shows the other tab of SSTab_Communication and keeps it. Called by the menu.
void toggle_interface_box_chip();

}  // namespace kx
