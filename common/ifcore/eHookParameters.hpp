#pragma once

/// For observers that treat every operation alike: from the types of an operation in eInterfaceTableHooks.def,
/// EHOOK_PARAMETERS(...) makes named parameters and EHOOK_ARGUMENTS(...) the list that passes them on:
///
///     #define EHOOK(operation, ...)
///         void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override { next.operation(EHOOK_ARGUMENTS(__VA_ARGS__)); }
///     #include "eInterfaceTableHooks.def"
///
/// Operations have one to four arguments, the names are a1 to a4.
#define EHOOK_PARAMETERS(...) EHOOK_SELECT(__VA_ARGS__, EHOOK_P4, EHOOK_P3, EHOOK_P2, EHOOK_P1, )(__VA_ARGS__)
#define EHOOK_ARGUMENTS(...) EHOOK_SELECT(__VA_ARGS__, EHOOK_A4, EHOOK_A3, EHOOK_A2, EHOOK_A1, )(__VA_ARGS__)

#define EHOOK_SELECT(t1, t2, t3, t4, chosen, ...) chosen
#define EHOOK_P1(t1) t1 a1
#define EHOOK_P2(t1, t2) t1 a1, t2 a2
#define EHOOK_P3(t1, t2, t3) t1 a1, t2 a2, t3 a3
#define EHOOK_P4(t1, t2, t3, t4) t1 a1, t2 a2, t3 a3, t4 a4
#define EHOOK_A1(t1) a1
#define EHOOK_A2(t1, t2) a1, a2
#define EHOOK_A3(t1, t2, t3) a1, a2, a3
#define EHOOK_A4(t1, t2, t3, t4) a1, a2, a3, a4
