// texts.h: messages that more than one file of this folder prints.
#pragma once

constexpr char CELLS_NOT_KEPT[] = "\nError: grid cells can't be kept in the temporary file";
constexpr char CELLS_NOT_READ[] = "\nError: grid cells can't be read from the temporary file";
