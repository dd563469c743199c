#pragma once

#include <QLatin1String>

#include <array>

/// The small tables that the whole program shares. Strings stand here as they go into files and
/// paths.
namespace tables {

/// A target's kind of difference (uniform, shape, contrast, orientation, size) and its side.
inline constexpr std::array<QLatin1String, 10> _shapeDef{
    QLatin1String("IdR"), QLatin1String("ShR"), QLatin1String("CnR"), QLatin1String("OrR"),
    QLatin1String("SzR"), QLatin1String("IdL"), QLatin1String("ShL"), QLatin1String("CnL"),
    QLatin1String("OrL"), QLatin1String("SzL")};

/// The five kinds of difference, as on the answer buttons.
inline constexpr std::array<QLatin1String, 5> _shapeButton{QLatin1String("Id"), QLatin1String("Sh"),
                                                           QLatin1String("Cn"), QLatin1String("Or"),
                                                           QLatin1String("Sz")};

/// The six peripheral positions: top, middle, bottom, on the left and on the right.
inline constexpr std::array<QLatin1String, 6> _triDef{QLatin1String("TL"), QLatin1String("ML"),
                                                      QLatin1String("BL"), QLatin1String("TR"),
                                                      QLatin1String("MR"), QLatin1String("BR")};

/// The eight directions of the compass rose, clockwise from the right.
inline constexpr std::array<QLatin1String, 8> _roseVents{
    QLatin1String("E"), QLatin1String("SE"), QLatin1String("S"), QLatin1String("SW"),
    QLatin1String("W"), QLatin1String("NW"), QLatin1String("N"), QLatin1String("NE")};

/// The four directions of movement, clockwise from the right.
inline constexpr std::array<QLatin1String, 4> _dirMovement{QLatin1String("E"), QLatin1String("S"),
                                                           QLatin1String("W"), QLatin1String("N")};

/// The screen frequencies, by the number kept in screen.pix.
inline constexpr std::array<QLatin1String, 2> _frequency{QLatin1String("60Hz"),
                                                         QLatin1String("120Hz")};

/// What stands before a document's extension, by language number.
inline constexpr std::array<QLatin1String, 6> _language{QLatin1String("_en"), QLatin1String("_fr"),
                                                        QLatin1String("_de"), QLatin1String("_it"),
                                                        QLatin1String("_es"), QLatin1String("_nl")};

/// The folder of a language below the data root. File names are joined to it as it stands, so that
/// from German on they begin with the two letters of the language and lie in Languages itself.
inline constexpr std::array<QLatin1String, 6> _pathLanguage{
    QLatin1String("/Languages/En/"), QLatin1String("/Languages/Fr/"),
    QLatin1String("/Languages/De"),  QLatin1String("/Languages/It"),
    QLatin1String("/Languages/Es"),  QLatin1String("/Languages/Nl")};

/// The header line of the trial files.
inline constexpr char _headerArchive[] =
    "code;gender;l_name;f_name;dob;task;session;date;time;subtask;rank_task;rank_sub;t1_time;"
    "t1c_figure;t1c_answer;t1p_position;t1p_answer;t1_tanswer;t1_answer;t1_implement;t2_rt;"
    "t2_position;t3_rt;t3_position;t3_dir_mov;t4_dist_first;t4_dist_last;t4_pos_first;t4_pos_last;"
    "error\n";

} // namespace tables
