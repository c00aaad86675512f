#pragma once

#include <string>

#include "settings/shown_text.h"

/// What the program says without asking for an answer, in the main form's status line.
namespace kx {

/// Sentences, parted by LF; empty when there is nothing to say. Written by Show_Notice.
extern Shown_Text notice_text;

/// Shows @p text in place of what the line has said so far.
void Show_Notice(const std::string& text);

/// Shows @p text behind what the line says.
void Add_Notice(const std::string& text);

/// Nothing to say.
void Reset_Notice_State();

}  // namespace kx
