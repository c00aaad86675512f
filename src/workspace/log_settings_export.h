#pragma once

namespace kx {

/// The button cmd_Export_Log_kxs_settings: takes the box settings that the log carries as the tune, which can
/// be undone. A log without valid ones is told of; settings of another dataset only after a question.
void cmd_Export_Log_kxs_settings_Click();

}  // namespace kx
