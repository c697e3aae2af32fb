// The calls of Pango, Cairo and GLib that text is drawn with, found at the first use: the plug-in must load on a server
// that has none of these libraries. Declared here, because it must build there too.
#pragma once

extern "C" {

using cairo_t = struct _cairo;
using cairo_path_t = struct cairo_path;
using cairo_font_options_t = struct _cairo_font_options;
using PangoLayout = struct _PangoLayout;
using PangoContext = struct _PangoContext;
using PangoFontMap = struct _PangoFontMap;
using PangoFontFamily = struct _PangoFontFamily;
using PangoFontDescription = struct _PangoFontDescription;
using PangoAttrList = struct _PangoAttrList;
using PangoAttribute = struct _PangoAttribute;
}

namespace zkt {

// Values of the libraries' enumerations.
inline constexpr int kPangoScale = 1024;  // Pango's units in one of Cairo's
inline constexpr int kPangoStyleItalic = 2;
inline constexpr int kPangoWeightBold = 700;
inline constexpr int kPangoUnderlineSingle = 1;
inline constexpr int kCairoHintMetricsOff = 1;

// clang-format off
#define ZKT_PANGO_CALLS(CALL) \
  CALL(void,                  cairo_save,                               (cairo_t*)) \
  CALL(void,                  cairo_restore,                            (cairo_t*)) \
  CALL(void,                  cairo_new_path,                           (cairo_t*)) \
  CALL(cairo_path_t*,         cairo_copy_path,                          (cairo_t*)) \
  CALL(void,                  cairo_append_path,                        (cairo_t*, const cairo_path_t*)) \
  CALL(void,                  cairo_path_destroy,                       (cairo_path_t*)) \
  CALL(void,                  cairo_reset_clip,                         (cairo_t*)) \
  CALL(void,                  cairo_identity_matrix,                    (cairo_t*)) \
  CALL(void,                  cairo_clip_extents,                       (cairo_t*, double* x1, double* y1, double* x2, double* y2)) \
  CALL(void,                  cairo_device_to_user,                     (cairo_t*, double* x, double* y)) \
  CALL(void,                  cairo_translate,                          (cairo_t*, double x, double y)) \
  CALL(void,                  cairo_rotate,                             (cairo_t*, double radians)) \
  CALL(void,                  cairo_move_to,                            (cairo_t*, double x, double y)) \
  CALL(void,                  cairo_set_source_rgba,                    (cairo_t*, double red, double green, double blue, double alpha)) \
  CALL(cairo_font_options_t*, cairo_font_options_create,                ()) \
  CALL(void,                  cairo_font_options_destroy,               (cairo_font_options_t*)) \
  CALL(void,                  cairo_font_options_set_hint_metrics,      (cairo_font_options_t*, int)) \
  CALL(PangoLayout*,          pango_cairo_create_layout,                (cairo_t*)) \
  CALL(void,                  pango_cairo_update_layout,                (cairo_t*, PangoLayout*)) \
  CALL(void,                  pango_cairo_show_layout,                  (cairo_t*, PangoLayout*)) \
  CALL(void,                  pango_cairo_context_set_font_options,     (PangoContext*, const cairo_font_options_t*)) \
  CALL(PangoContext*,         pango_layout_get_context,                 (PangoLayout*)) \
  CALL(void,                  pango_layout_context_changed,             (PangoLayout*)) \
  CALL(void,                  pango_layout_set_text,                    (PangoLayout*, const char* text, int bytes)) \
  CALL(void,                  pango_layout_set_font_description,        (PangoLayout*, const PangoFontDescription*)) \
  CALL(void,                  pango_layout_set_attributes,              (PangoLayout*, PangoAttrList*)) \
  CALL(void,                  pango_layout_get_size,                    (PangoLayout*, int* width, int* height)) \
  CALL(PangoFontMap*,         pango_context_get_font_map,               (PangoContext*)) \
  CALL(void,                  pango_font_map_list_families,             (PangoFontMap*, PangoFontFamily***, int* count)) \
  CALL(const char*,           pango_font_family_get_name,               (PangoFontFamily*)) \
  CALL(PangoFontDescription*, pango_font_description_new,               ()) \
  CALL(void,                  pango_font_description_free,              (PangoFontDescription*)) \
  CALL(void,                  pango_font_description_set_family,        (PangoFontDescription*, const char*)) \
  CALL(void,                  pango_font_description_set_style,         (PangoFontDescription*, int)) \
  CALL(void,                  pango_font_description_set_weight,        (PangoFontDescription*, int)) \
  CALL(void,                  pango_font_description_set_absolute_size, (PangoFontDescription*, double)) \
  CALL(char*,                 pango_font_description_to_string,         (const PangoFontDescription*)) \
  CALL(PangoAttrList*,        pango_attr_list_new,                      ()) \
  CALL(void,                  pango_attr_list_insert,                   (PangoAttrList*, PangoAttribute*)) \
  CALL(void,                  pango_attr_list_unref,                    (PangoAttrList*)) \
  CALL(PangoAttribute*,       pango_attr_underline_new,                 (int)) \
  CALL(void,                  g_object_unref,                           (void*)) \
  CALL(void,                  g_free,                                   (void*))

// Since Pango 1.44; before, glyphs always stand on whole units.
#define ZKT_OPTIONAL_PANGO_CALLS(CALL) \
  CALL(void,                  pango_context_set_round_glyph_positions,  (PangoContext*, int))
// clang-format on

struct PangoCalls {
#define ZKT_MEMBER(result, name, parameters) result(*name) parameters = nullptr;
  ZKT_PANGO_CALLS(ZKT_MEMBER)
  ZKT_OPTIONAL_PANGO_CALLS(ZKT_MEMBER)
#undef ZKT_MEMBER
};

// Loads the libraries at the first call of the process, for good. Null when one of them, or a call that is not
// optional, is missing.
const PangoCalls* FindPango();

}  // namespace zkt
