// Light and frames go up, from ONUs to their port, or down.
#pragma once

namespace ponsim
{

enum class Direction { up, down };
inline constexpr Direction directions[] = {Direction::up, Direction::down};

} // namespace ponsim
