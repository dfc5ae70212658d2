#include "support/GlSnapshot_win.h"

#include "support/GlCanvas_win.h"

namespace zyn::test {
namespace {

struct Query {
  const char* name;
  GLenum value;
  size_t count;
};

constexpr Query kQueries[] = {
    {"current colour", GL_CURRENT_COLOR, 4},
    {"blend", GL_BLEND, 1},
    {"blend source", GL_BLEND_SRC, 1},
    {"blend destination", GL_BLEND_DST, 1},
    {"depth test", GL_DEPTH_TEST, 1},
    {"depth mask", GL_DEPTH_WRITEMASK, 1},
    {"depth function", GL_DEPTH_FUNC, 1},
    {"cull face", GL_CULL_FACE, 1},
    {"cull face mode", GL_CULL_FACE_MODE, 1},
    {"front face", GL_FRONT_FACE, 1},
    {"polygon mode", GL_POLYGON_MODE, 2},
    {"shade model", GL_SHADE_MODEL, 1},
    {"lighting", GL_LIGHTING, 1},
    {"light 0", GL_LIGHT0, 1},
    {"light 1", GL_LIGHT1, 1},
    {"light model ambient", GL_LIGHT_MODEL_AMBIENT, 4},
    {"two-sided lighting", GL_LIGHT_MODEL_TWO_SIDE, 1},
    {"local viewer", GL_LIGHT_MODEL_LOCAL_VIEWER, 1},
    {"colour material", GL_COLOR_MATERIAL, 1},
    {"normalize", GL_NORMALIZE, 1},
    {"line width", GL_LINE_WIDTH, 1},
    {"line smooth", GL_LINE_SMOOTH, 1},
    {"line stipple", GL_LINE_STIPPLE, 1},
    {"point size", GL_POINT_SIZE, 1},
    {"texture 2D", GL_TEXTURE_2D, 1},
    {"matrix mode", GL_MATRIX_MODE, 1},
    {"model-view depth", GL_MODELVIEW_STACK_DEPTH, 1},
    {"projection depth", GL_PROJECTION_STACK_DEPTH, 1},
    {"attribute depth", GL_ATTRIB_STACK_DEPTH, 1},
    {"name stack depth", GL_NAME_STACK_DEPTH, 1},
    {"model-view", GL_MODELVIEW_MATRIX, 16},
    {"projection", GL_PROJECTION_MATRIX, 16},
    {"viewport", GL_VIEWPORT, 4},
    {"list base", GL_LIST_BASE, 1},
    {"raster position", GL_CURRENT_RASTER_POSITION, 4},
    {"raster position valid", GL_CURRENT_RASTER_POSITION_VALID, 1},
    {"client attribute depth", GL_CLIENT_ATTRIB_STACK_DEPTH, 1},
    {"unpack alignment", GL_UNPACK_ALIGNMENT, 1},
    {"unpack row length", GL_UNPACK_ROW_LENGTH, 1},
    {"unpack skip rows", GL_UNPACK_SKIP_ROWS, 1},
    {"unpack skip pixels", GL_UNPACK_SKIP_PIXELS, 1},
    {"unpack swap bytes", GL_UNPACK_SWAP_BYTES, 1},
    {"map colour", GL_MAP_COLOR, 1},
    {"red scale", GL_RED_SCALE, 1},
    {"green scale", GL_GREEN_SCALE, 1},
    {"blue scale", GL_BLUE_SCALE, 1},
    {"alpha scale", GL_ALPHA_SCALE, 1},
    {"red bias", GL_RED_BIAS, 1},
    {"green bias", GL_GREEN_BIAS, 1},
    {"blue bias", GL_BLUE_BIAS, 1},
    {"alpha bias", GL_ALPHA_BIAS, 1},
    {"zoom x", GL_ZOOM_X, 1},
    {"zoom y", GL_ZOOM_Y, 1},
};

struct MaterialQuery {
  const char* name;
  GLenum value;
  size_t count;
};

constexpr MaterialQuery kMaterials[] = {
    {"ambient", GL_AMBIENT, 4},   {"diffuse", GL_DIFFUSE, 4},     {"specular", GL_SPECULAR, 4},
    {"emission", GL_EMISSION, 4}, {"shininess", GL_SHININESS, 1},
};

void addMaterials(GlSnapshot& snapshot, GLenum face, const std::string& side) {
  for (const MaterialQuery& query : kMaterials) {
    GLfloat values[4] = {};
    glGetMaterialfv(face, query.value, values);
    snapshot[side + " " + query.name].assign(values, values + query.count);
  }
}

}  // namespace

GlSnapshot takeGlSnapshot() {
  GlSnapshot snapshot;
  for (const Query& query : kQueries) {
    GLdouble values[16] = {};
    glGetDoublev(query.value, values);
    snapshot[query.name].assign(values, values + query.count);
  }
  addMaterials(snapshot, GL_FRONT, "front");
  addMaterials(snapshot, GL_BACK, "back");
  snapshot["error"] = {static_cast<double>(glGetError())};
  return snapshot;
}

std::string differences(const GlSnapshot& before, const GlSnapshot& after) {
  const auto text = [](const std::vector<double>& values) {
    std::string joined;
    for (double value : values) joined += " " + std::to_string(value);
    return joined;
  };
  std::string lines;
  for (const auto& [name, values] : before) {
    const std::vector<double>& now = after.at(name);
    if (now != values) lines += name + ":" + text(values) + " became" + text(now) + "\n";
  }
  return lines;
}

}  // namespace zyn::test
