// color_codes.h: colours of the product's own polyline files.
#pragma once

// The file's code for a host colour index, and the other way. Only 1 to 7 of the host and their codes
// differ; every other number stands for itself.
int file_color_of(int host_color);
int host_color_of(int file_color);
