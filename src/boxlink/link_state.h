#pragma once

#include "settings/image.h"

/// What the transfer engines share. Written by them only; all of it is unset between transfers but for the
/// images and marks, which keep what the last comparison found, and Run_Left_Open.
namespace kx {

extern Byte_Image Box_Master_Image;  ///< bytes 0 to 250 as last read from the master in a comparison
extern Byte_Image Box_Slave_Image;   ///< the same of the slave
extern Byte_Image Diff_Flags;        ///< 255 where the box differs from the tune, else 0

extern bool Verify_Mode;   ///< the read in progress compares instead of loading
extern bool Write_Mode;    ///< a write is in progress: its comparison marks bytes and is otherwise silent
extern bool Write_Verify;  ///< the comparison in progress is the read-back of a write

/// An operation has ended in an open run: the line was lost, or nobody has waited to see whether the box has
/// heard the "$". The next operation sends it before anything else.
extern bool Run_Left_Open;

/// The master's image has come whole and sound: it is what a tune is compared with. A box that has not told
/// its dataset counts as of the one in its image.
void Note_Master_Read(const Byte_Image& read);

/// A run to the master begins: what was read from it before is in doubt until it is read back.
void Note_Master_Run();

/// A box has told who it is: what was read from another one says nothing of it.
void Note_Box_Answer();

/// Clears the three modes; every way out of a transfer does.
void Clear_Transfer_Modes();

/// Runs @p refresh at the end of a read. A view that fails is told in the status; the tune has been read.
void Refresh_Views(void (*refresh)());

/// Brings the whole box link to its state before the first transfer, port closed.
void Reset_Link_State();

}  // namespace kx
