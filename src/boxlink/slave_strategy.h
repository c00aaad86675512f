#pragma once

/// How the timer-driven engine treats the slave behind the box. It holds the master's bytes 0 to 249, but for
/// the slave mark in byte 1.
namespace kx {

/// Asks for the slave's image and sets Slave_Needed when one came. A box for each question without an answer;
/// none of them stops the write.
/// @return false when the port did not open, which ends the operation.
[[nodiscard]] bool Check_Slave_Data_Strategy();

/// Compares Slave_Image with what the transfer sends. Where they differ, one run for each byte is prepared
/// and Write_Mode set; otherwise the slave phase is over. A slave in which two repairs in a row have left no
/// fewer bytes differing is given up, which ends the phase too.
void MasterSlaveCompare();

}  // namespace kx
