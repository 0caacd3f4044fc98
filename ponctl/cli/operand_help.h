// These texts are the help for arguments that several groups have.
#pragma once

namespace ponctl
{

inline constexpr const char *port_help = "PON port number";
inline constexpr const char *port_or_all_help = "PON port number; all ports when left out";
inline constexpr const char *port_or_set_help = "PON port number; or with the ids of its ONUs, as 1/3-17,20 or 1/all";

} // namespace ponctl
