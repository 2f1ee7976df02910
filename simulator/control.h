// The control socket: commands from outside while the switch runs.
//
// A client connects, sends the words of one command, each with a zero byte behind it, and ends its side. The answer is
// "0" and what was asked for, or "1" and one line that says what is wrong; and a zero byte, without which it broke off.
#pragma once

namespace switchsim {

/// Opens the Unix socket that the environment's SWITCHSIM_CONTROL names, if any, mode 0600, and serves it from a thread
/// of its own until the process ends; later calls do nothing. What goes wrong is told on standard error. While another
/// process has the socket, it is tried for again: the other one may be about to end.
void open_control();

} // namespace switchsim
