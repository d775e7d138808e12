#pragma once

// The actions of host commands.
inline constexpr unsigned int SET = 2;
inline constexpr unsigned int ENABLE = 3;
inline constexpr unsigned int DISABLE = 4;
inline constexpr unsigned int ADD = 5;
inline constexpr unsigned int REMOVE = 6;
inline constexpr unsigned int EDIT = 7;
