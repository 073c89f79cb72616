#pragma once

// A run that only reads (a listing from the command line) leaves the program's own files as
// they are: no start-up trace in "52.txt", no server name saved to ZOR.INI. The program
// itself never sets it.
namespace qln {

void gpReadOnlyRun_set(bool bOn);
bool gfbReadOnlyRun();

} // namespace qln
