#include "support/GlState_gl.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <sstream>

#include "glcontext/gl_api.h"

namespace zyn::test {

namespace {

struct Query {
  const char* name;
  GLenum value;
  std::size_t count;
};

#define QUERY(name, count) \
  { #name, name, count }

constexpr Query kCapabilities[] = {
    QUERY(GL_ALPHA_TEST, 1),
    QUERY(GL_AUTO_NORMAL, 1),
    QUERY(GL_BLEND, 1),
    QUERY(GL_COLOR_ARRAY, 1),
    QUERY(GL_COLOR_LOGIC_OP, 1),
    QUERY(GL_COLOR_MATERIAL, 1),
    QUERY(GL_CULL_FACE, 1),
    QUERY(GL_DEPTH_TEST, 1),
    QUERY(GL_DITHER, 1),
    QUERY(GL_EDGE_FLAG_ARRAY, 1),
    QUERY(GL_FOG, 1),
    QUERY(GL_INDEX_ARRAY, 1),
    QUERY(GL_INDEX_LOGIC_OP, 1),
    QUERY(GL_LIGHTING, 1),
    QUERY(GL_LINE_SMOOTH, 1),
    QUERY(GL_LINE_STIPPLE, 1),
    QUERY(GL_NORMALIZE, 1),
    QUERY(GL_NORMAL_ARRAY, 1),
    QUERY(GL_POINT_SMOOTH, 1),
    QUERY(GL_POLYGON_OFFSET_FILL, 1),
    QUERY(GL_POLYGON_OFFSET_LINE, 1),
    QUERY(GL_POLYGON_OFFSET_POINT, 1),
    QUERY(GL_POLYGON_SMOOTH, 1),
    QUERY(GL_POLYGON_STIPPLE, 1),
    QUERY(GL_SCISSOR_TEST, 1),
    QUERY(GL_STENCIL_TEST, 1),
    QUERY(GL_TEXTURE_1D, 1),
    QUERY(GL_TEXTURE_2D, 1),
    QUERY(GL_TEXTURE_COORD_ARRAY, 1),
    QUERY(GL_TEXTURE_GEN_Q, 1),
    QUERY(GL_TEXTURE_GEN_R, 1),
    QUERY(GL_TEXTURE_GEN_S, 1),
    QUERY(GL_TEXTURE_GEN_T, 1),
    QUERY(GL_VERTEX_ARRAY, 1),
};

constexpr Query kValues[] = {
    QUERY(GL_ACCUM_CLEAR_VALUE, 4),
    QUERY(GL_ALPHA_BIAS, 1),
    QUERY(GL_ALPHA_SCALE, 1),
    QUERY(GL_ALPHA_TEST_FUNC, 1),
    QUERY(GL_ALPHA_TEST_REF, 1),
    QUERY(GL_ATTRIB_STACK_DEPTH, 1),
    QUERY(GL_BLEND_DST, 1),
    QUERY(GL_BLEND_SRC, 1),
    QUERY(GL_BLUE_BIAS, 1),
    QUERY(GL_BLUE_SCALE, 1),
    QUERY(GL_CLIENT_ATTRIB_STACK_DEPTH, 1),
    QUERY(GL_COLOR_CLEAR_VALUE, 4),
    QUERY(GL_COLOR_MATERIAL_FACE, 1),
    QUERY(GL_COLOR_MATERIAL_PARAMETER, 1),
    QUERY(GL_COLOR_WRITEMASK, 4),
    QUERY(GL_CULL_FACE_MODE, 1),
    QUERY(GL_CURRENT_COLOR, 4),
    QUERY(GL_CURRENT_INDEX, 1),
    QUERY(GL_CURRENT_NORMAL, 3),
    QUERY(GL_CURRENT_RASTER_COLOR, 4),
    QUERY(GL_CURRENT_RASTER_DISTANCE, 1),
    QUERY(GL_CURRENT_RASTER_POSITION, 4),
    QUERY(GL_CURRENT_RASTER_POSITION_VALID, 1),
    QUERY(GL_CURRENT_RASTER_TEXTURE_COORDS, 4),
    QUERY(GL_CURRENT_TEXTURE_COORDS, 4),
    QUERY(GL_DEPTH_BIAS, 1),
    QUERY(GL_DEPTH_CLEAR_VALUE, 1),
    QUERY(GL_DEPTH_FUNC, 1),
    QUERY(GL_DEPTH_RANGE, 2),
    QUERY(GL_DEPTH_SCALE, 1),
    QUERY(GL_DEPTH_WRITEMASK, 1),
    QUERY(GL_DRAW_BUFFER, 1),
    QUERY(GL_EDGE_FLAG, 1),
    QUERY(GL_FOG_COLOR, 4),
    QUERY(GL_FOG_DENSITY, 1),
    QUERY(GL_FOG_END, 1),
    QUERY(GL_FOG_HINT, 1),
    QUERY(GL_FOG_MODE, 1),
    QUERY(GL_FOG_START, 1),
    QUERY(GL_FRONT_FACE, 1),
    QUERY(GL_GREEN_BIAS, 1),
    QUERY(GL_GREEN_SCALE, 1),
    QUERY(GL_INDEX_CLEAR_VALUE, 1),
    QUERY(GL_LIGHT_MODEL_AMBIENT, 4),
    QUERY(GL_LIGHT_MODEL_LOCAL_VIEWER, 1),
    QUERY(GL_LIGHT_MODEL_TWO_SIDE, 1),
    QUERY(GL_LINE_SMOOTH_HINT, 1),
    QUERY(GL_LINE_STIPPLE_PATTERN, 1),
    QUERY(GL_LINE_STIPPLE_REPEAT, 1),
    QUERY(GL_LINE_WIDTH, 1),
    QUERY(GL_LIST_BASE, 1),
    QUERY(GL_LIST_INDEX, 1),
    QUERY(GL_LOGIC_OP_MODE, 1),
    QUERY(GL_MAP_COLOR, 1),
    QUERY(GL_MAP_STENCIL, 1),
    QUERY(GL_MATRIX_MODE, 1),
    QUERY(GL_MODELVIEW_MATRIX, 16),
    QUERY(GL_MODELVIEW_STACK_DEPTH, 1),
    QUERY(GL_NAME_STACK_DEPTH, 1),
    QUERY(GL_PACK_ALIGNMENT, 1),
    QUERY(GL_PACK_ROW_LENGTH, 1),
    QUERY(GL_PACK_SKIP_PIXELS, 1),
    QUERY(GL_PACK_SKIP_ROWS, 1),
    QUERY(GL_PACK_SWAP_BYTES, 1),
    QUERY(GL_PERSPECTIVE_CORRECTION_HINT, 1),
    QUERY(GL_POINT_SIZE, 1),
    QUERY(GL_POINT_SMOOTH_HINT, 1),
    QUERY(GL_POLYGON_MODE, 2),
    QUERY(GL_POLYGON_OFFSET_FACTOR, 1),
    QUERY(GL_POLYGON_OFFSET_UNITS, 1),
    QUERY(GL_POLYGON_SMOOTH_HINT, 1),
    QUERY(GL_PROJECTION_MATRIX, 16),
    QUERY(GL_PROJECTION_STACK_DEPTH, 1),
    QUERY(GL_READ_BUFFER, 1),
    QUERY(GL_RED_BIAS, 1),
    QUERY(GL_RED_SCALE, 1),
    QUERY(GL_RENDER_MODE, 1),
    QUERY(GL_SCISSOR_BOX, 4),
    QUERY(GL_SHADE_MODEL, 1),
    QUERY(GL_STENCIL_CLEAR_VALUE, 1),
    QUERY(GL_STENCIL_FAIL, 1),
    QUERY(GL_STENCIL_FUNC, 1),
    QUERY(GL_STENCIL_PASS_DEPTH_FAIL, 1),
    QUERY(GL_STENCIL_PASS_DEPTH_PASS, 1),
    QUERY(GL_STENCIL_REF, 1),
    QUERY(GL_STENCIL_VALUE_MASK, 1),
    QUERY(GL_STENCIL_WRITEMASK, 1),
    QUERY(GL_TEXTURE_BINDING_1D, 1),
    QUERY(GL_TEXTURE_BINDING_2D, 1),
    QUERY(GL_TEXTURE_MATRIX, 16),
    QUERY(GL_TEXTURE_STACK_DEPTH, 1),
    QUERY(GL_UNPACK_ALIGNMENT, 1),
    QUERY(GL_UNPACK_ROW_LENGTH, 1),
    QUERY(GL_UNPACK_SKIP_PIXELS, 1),
    QUERY(GL_UNPACK_SKIP_ROWS, 1),
    QUERY(GL_UNPACK_SWAP_BYTES, 1),
    QUERY(GL_VIEWPORT, 4),
    QUERY(GL_ZOOM_X, 1),
    QUERY(GL_ZOOM_Y, 1),
};

constexpr Query kLightValues[] = {
    QUERY(GL_AMBIENT, 4),
    QUERY(GL_DIFFUSE, 4),
    QUERY(GL_SPECULAR, 4),
    QUERY(GL_POSITION, 4),
    QUERY(GL_SPOT_DIRECTION, 3),
    QUERY(GL_SPOT_EXPONENT, 1),
    QUERY(GL_SPOT_CUTOFF, 1),
    QUERY(GL_CONSTANT_ATTENUATION, 1),
    QUERY(GL_LINEAR_ATTENUATION, 1),
    QUERY(GL_QUADRATIC_ATTENUATION, 1),
};

constexpr Query kMaterialValues[] = {
    QUERY(GL_AMBIENT, 4),  QUERY(GL_DIFFUSE, 4),   QUERY(GL_SPECULAR, 4),
    QUERY(GL_EMISSION, 4), QUERY(GL_SHININESS, 1),
};

#undef QUERY

constexpr GLenum kLightCount = 8;
constexpr GLenum kClipPlaneCount = 6;
constexpr int kMostErrors = 16;

template <class Values>
void store(GlState& state, const std::string& name, const Values& values, std::size_t count) {
  state[name].assign(values, values + count);
}

void readErrors(GlState& state) {
  std::vector<double>& errors = state["error"];
  for (int i = 0; i < kMostErrors; ++i) {
    const GLenum error = glGetError();
    if (error == GL_NO_ERROR) {
      return;
    }
    errors.push_back(error);
  }
}

void readCapability(GlState& state, const std::string& name, GLenum capability) {
  state[name] = {static_cast<double>(glIsEnabled(capability))};
}

void readLights(GlState& state) {
  for (GLenum light = 0; light < kLightCount; ++light) {
    const std::string name = "GL_LIGHT" + std::to_string(light);
    readCapability(state, name, GL_LIGHT0 + light);
    for (const Query& query : kLightValues) {
      GLfloat values[4] = {};
      glGetLightfv(GL_LIGHT0 + light, query.value, values);
      store(state, name + ' ' + query.name, values, query.count);
    }
  }
}

void readMaterial(GlState& state, const std::string& name, GLenum face) {
  for (const Query& query : kMaterialValues) {
    GLfloat values[4] = {};
    glGetMaterialfv(face, query.value, values);
    store(state, name + ' ' + query.name, values, query.count);
  }
}

void readClipPlanes(GlState& state) {
  for (GLenum plane = 0; plane < kClipPlaneCount; ++plane) {
    const std::string name = "GL_CLIP_PLANE" + std::to_string(plane);
    readCapability(state, name, GL_CLIP_PLANE0 + plane);
    GLdouble equation[4] = {};
    glGetClipPlane(GL_CLIP_PLANE0 + plane, equation);
    store(state, name + " equation", equation, 4);
  }
}

void readTextureEnvironment(GlState& state) {
  GLfloat values[4] = {};
  glGetTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, values);
  store(state, "GL_TEXTURE_ENV_MODE", values, 1);
  glGetTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, values);
  store(state, "GL_TEXTURE_ENV_COLOR", values, 4);
}

void readPolygonStipple(GlState& state) {
  GLubyte mask[128] = {};
  glGetPolygonStipple(mask);
  store(state, "polygon stipple", mask, 128);
}

/// Values that are no numbers are alike.
bool isSame(const std::vector<double>& expected, const std::vector<double>& actual) {
  return std::ranges::equal(expected, actual, [](double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
  });
}

std::string text(const std::vector<double>& values) {
  std::ostringstream out;
  out.precision(9);
  for (const double value : values) {
    out << ' ' << value;
  }
  return out.str();
}

}  // namespace

GlState readGlState() {
  GlState state;
  readErrors(state);
  for (const Query& query : kCapabilities) {
    readCapability(state, query.name, query.value);
  }
  for (const Query& query : kValues) {
    GLdouble values[16] = {};
    glGetDoublev(query.value, values);
    store(state, query.name, values, query.count);
  }
  readLights(state);
  readMaterial(state, "GL_FRONT", GL_FRONT);
  readMaterial(state, "GL_BACK", GL_BACK);
  readClipPlanes(state);
  readTextureEnvironment(state);
  readPolygonStipple(state);
  return state;
}

std::vector<std::string> differences(const GlState& expected, const GlState& actual) {
  std::vector<std::string> found;
  for (const auto& [name, values] : actual) {
    const auto other = expected.find(name);
    if (other == expected.end() || !isSame(other->second, values)) {
      found.push_back(name + ":" + (other == expected.end() ? "" : text(other->second)) + " ->" +
                      text(values));
    }
  }
  for (const auto& [name, values] : expected) {
    if (!actual.contains(name)) {
      found.push_back(name + ":" + text(values) + " -> nothing");
    }
  }
  return found;
}

}  // namespace zyn::test
