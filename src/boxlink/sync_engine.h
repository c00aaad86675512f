#pragma once

/// The transfers behind "Read", "Write" and "Verify". Each runs from its click to its end, with the event
/// loop going on in its waits; a click that comes meanwhile is not entered. On every way out the port is
/// closed, but for a read whose box did not answer the first query, and the line is free again. A lost device
/// ends the transfer with its "aborted" word and throws Failure; "Close port" and the closing of the program
/// end it with that word at once.
namespace kx {

/// "Read": loads the tune from the box.
void Read_Settings_Click();

/// "Verify": compares bytes 0 to 250 of the tune with the box and its slave, and marks the differing ones.
void Verify_Settings_Click();

/// "Write": sends the bytes that differ, and reads back.
void Write_Settings_Click();

}  // namespace kx
