// The Pango, Cairo and GLib functions for drawing text. They are resolved on first use, because the plug-in must load
// on a server without these libraries. They are declared here, because the plug-in must also build on such a server.
#pragma once

extern "C" {

using cairo_t = struct _cairo;
using cairo_path_t = struct cairo_path;
using PangoLayout = struct _PangoLayout;
using PangoContext = struct _PangoContext;
using PangoFontMap = struct _PangoFontMap;
using PangoFontFamily = struct _PangoFontFamily;
using PangoFontDescription = struct _PangoFontDescription;
using PangoAttrList = struct _PangoAttrList;
using PangoAttribute = struct _PangoAttribute;
using PangoLayoutIter = struct _PangoLayoutIter;
using PangoLayoutLine = struct _PangoLayoutLine;

struct PangoRectangle {
  int x, y, width, height;
};
}

namespace zkt {

// Constants of these libraries.
inline constexpr int kPangoScale = 1024;  // Pango units per Cairo unit
inline constexpr int kPangoStyleItalic = 2;
inline constexpr int kPangoWeightBold = 700;
inline constexpr int kPangoUnderlineSingle = 1;
inline constexpr int kCairoSuccess = 0;

// clang-format off
#define ZKT_PANGO_CALLS(CALL) \
  CALL(cairo_status,                            int(cairo_t*)) \
  CALL(cairo_save,                              void(cairo_t*)) \
  CALL(cairo_restore,                           void(cairo_t*)) \
  CALL(cairo_new_path,                          void(cairo_t*)) \
  CALL(cairo_copy_path,                         cairo_path_t*(cairo_t*)) \
  CALL(cairo_append_path,                       void(cairo_t*, const cairo_path_t*)) \
  CALL(cairo_path_destroy,                      void(cairo_path_t*)) \
  CALL(cairo_reset_clip,                        void(cairo_t*)) \
  CALL(cairo_identity_matrix,                   void(cairo_t*)) \
  CALL(cairo_clip_extents,                      void(cairo_t*, double* x1, double* y1, double* x2, double* y2)) \
  CALL(cairo_device_to_user,                    void(cairo_t*, double* x, double* y)) \
  CALL(cairo_user_to_device,                    void(cairo_t*, double* x, double* y)) \
  CALL(cairo_translate,                         void(cairo_t*, double x, double y)) \
  CALL(cairo_rotate,                            void(cairo_t*, double radians)) \
  CALL(cairo_move_to,                           void(cairo_t*, double x, double y)) \
  CALL(cairo_set_source_rgba,                   void(cairo_t*, double red, double green, double blue, double alpha)) \
  CALL(pango_cairo_create_layout,               PangoLayout*(cairo_t*)) \
  CALL(pango_cairo_update_layout,               void(cairo_t*, PangoLayout*)) \
  CALL(pango_cairo_show_layout,                 void(cairo_t*, PangoLayout*)) \
  CALL(pango_layout_get_context,                PangoContext*(PangoLayout*)) \
  CALL(pango_layout_set_text,                   void(PangoLayout*, const char* text, int bytes)) \
  CALL(pango_layout_set_font_description,       void(PangoLayout*, const PangoFontDescription*)) \
  CALL(pango_layout_set_attributes,             void(PangoLayout*, PangoAttrList*)) \
  CALL(pango_layout_get_size,                   void(PangoLayout*, int* width, int* height)) \
  CALL(pango_layout_get_iter,                   PangoLayoutIter*(PangoLayout*)) \
  CALL(pango_layout_iter_free,                  void(PangoLayoutIter*)) \
  CALL(pango_layout_iter_next_cluster,          int(PangoLayoutIter*)) \
  CALL(pango_layout_iter_get_cluster_extents,   void(PangoLayoutIter*, PangoRectangle* ink, PangoRectangle* logical)) \
  CALL(pango_layout_iter_get_line_readonly,     PangoLayoutLine*(PangoLayoutIter*)) \
  CALL(pango_layout_iter_get_line_extents,      void(PangoLayoutIter*, PangoRectangle* ink, PangoRectangle* logical)) \
  CALL(pango_context_get_font_map,              PangoFontMap*(PangoContext*)) \
  CALL(pango_font_map_list_families,            void(PangoFontMap*, PangoFontFamily***, int* count)) \
  CALL(pango_font_family_get_name,              const char*(PangoFontFamily*)) \
  CALL(pango_font_description_new,              PangoFontDescription*()) \
  CALL(pango_font_description_free,             void(PangoFontDescription*)) \
  CALL(pango_font_description_set_family,       void(PangoFontDescription*, const char*)) \
  CALL(pango_font_description_set_style,        void(PangoFontDescription*, int)) \
  CALL(pango_font_description_set_weight,       void(PangoFontDescription*, int)) \
  CALL(pango_font_description_set_absolute_size, void(PangoFontDescription*, double)) \
  CALL(pango_font_description_to_string,        char*(const PangoFontDescription*)) \
  CALL(pango_attr_list_new,                     PangoAttrList*()) \
  CALL(pango_attr_list_insert,                  void(PangoAttrList*, PangoAttribute*)) \
  CALL(pango_attr_list_unref,                   void(PangoAttrList*)) \
  CALL(pango_attr_underline_new,                PangoAttribute*(int)) \
  CALL(g_object_unref,                          void(void*)) \
  CALL(g_free,                                  void(void*))

// Available since Pango 1.44. Older versions round glyph positions and sizes to whole units.
#define ZKT_OPTIONAL_PANGO_CALLS(CALL) \
  CALL(pango_context_set_round_glyph_positions, void(PangoContext*, int))
// clang-format on

struct PangoCalls {
  template <class Signature>
  using Function = Signature*;

#define ZKT_MEMBER(name, signature) Function<signature> name = nullptr;
  ZKT_PANGO_CALLS(ZKT_MEMBER)
  ZKT_OPTIONAL_PANGO_CALLS(ZKT_MEMBER)
#undef ZKT_MEMBER
};

// Loads the libraries on the first call in the process and never unloads them. Returns null if a library or a required
// function is missing, or if the process cannot start the threads that Pango needs for the first text.
const PangoCalls* FindPango();

}  // namespace zkt
