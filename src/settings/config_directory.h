// config_directory.h: the directory that the legacy coordinate program works in, kept in lines 3 and 4 of
// config.pik in the product's installation directory.
#pragma once

// Writes `path` there: the drive with its colon in line 3, the rest in line 4. Without a colon line 3 stays
// and line 4 is the whole path. Does nothing when the installation or one of its files isn't found.
void set_config_directory(const char* path);
