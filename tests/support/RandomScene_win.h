#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/ForeignObject_win.h"
#include "support/GlMeddling_win.h"
#include "support/GlState_gl.h"
#include "support/Image.h"
#include "support/Random.h"
#include "support/RandomTriangles_win.h"

namespace zyn::test {

/// Something that draws a list of objects: a view or a bitmap context.
class Stage {
 public:
  virtual ~Stage() = default;
  virtual void add(IDispatch* object, int mode) = 0;
  /// False where objects cannot be taken out one by one.
  virtual bool remove(IDispatch* object) = 0;
  /// Whether one call of remove takes out all elements of the object.
  virtual bool removesEvery() const { return false; }
  virtual void removeAll() = 0;
  virtual void draw() = 0;
  /// Changes how the scene is looked at, lit or smoothed.
  virtual void vary(Random& rng) = 0;
  /// How much larger texts are than they would be on the screen.
  virtual double textScale() const { return 1; }
  /// What the stage answers when it is asked about what it shows.
  virtual std::string answers() { return {}; }
};

/// What was seen of a scene while it was drawn.
struct Frame {
  GlState before;  ///< that the first object found
  GlState after;   ///< that the last object found
  int width = 0;
  std::vector<unsigned char> pixels;  ///< RGBA, that the objects left
  std::vector<float> depths;
  PixelBox text{0, 0, -1, -1};  ///< around the label that always faces the viewer; rows from below
};

/// What differs, in words; empty when nothing does.
std::string difference(const Frame& expected, const Frame& actual);

/// Gives a frame the text of another one where they look alike; else says how they differ.
std::string takeTextFrom(const Frame& expected, Frame& actual);

/// A random scene on one stage, or on two which share the objects, that is edited at random: two
/// with the same random numbers on like stages do the same. Between the triangles stand labels,
/// sprites and objects of other components, some of which change OpenGL's state, other objects or
/// the scene while they draw.
class RandomScene {
 public:
  /// How the library gets to see the triangles: as they are, or each inside an outside object.
  enum class Triangles { kAsTheyAre, kOutside };

  RandomScene(std::vector<std::unique_ptr<Stage>> stages, Triangles triangles);
  ~RandomScene();
  RandomScene(const RandomScene&) = delete;
  RandomScene& operator=(const RandomScene&) = delete;

  std::size_t stageCount() const { return stages_.size(); }

  /// Forgets everything and starts over with about this many objects.
  void start(Random rng, std::size_t objects);
  /// Adds triangles to the first stage, in two modes.
  void addTriangles(Random rng, std::size_t count);
  void edit(Random rng);
  /// Changes, removes or adds a triangle near the n-th place of the first stage's list.
  void editAt(Random rng, std::size_t n);
  /// Changes how a stage is looked at.
  void vary(Random rng, std::size_t stage) { stages_[stage]->vary(rng); }
  Frame draw(std::size_t stage);
  /// Has labels be drawn as outlines where objects leave state behind them: a clip plane is on,
  /// which clips nothing.
  void outlineTextsAmongMeddlers() { outlinesAmongMeddlers_ = true; }
  bool outlinesTexts() const { return hasMeddlers_ && outlinesAmongMeddlers_; }
  std::string answers(std::size_t stage) { return stages_[stage]->answers(); }

  /// What has been done since the last call, for messages.
  std::string takeLog();

 private:
  struct Item {
    ComPtr<IDispatch> object;         ///< as the stages know it
    ComPtr<IZYNGLTriangle> triangle;  ///< if it is one
  };
  struct Probes;

  Item makeItem(Random& rng);
  Item outsideOf(ComPtr<IZYNGLTriangle> triangle, ComPtr<IDispatch> object) const;
  Item makeTriangle(Random& rng) const;
  Item makeAggregated(Random& rng) const;
  Item makeImpostor(Random& rng) const;
  Item makeMeddler(Random& rng) const;
  Item makeActor(Random& rng);
  void act(Random& rng);
  void drawOther();
  bool hasFacingLabel() const;
  PixelBox boxOfFacingLabel() const;

  Item& anyItem(Random& rng) { return items_[rng.below(items_.size())]; }
  void add(std::size_t stage, IDispatch* object, int mode);
  void remove(std::size_t stage, IDispatch* object);
  void removeAll(std::size_t stage);
  static void change(IZYNGLTriangle* triangle, Random& rng);
  void log(const char* what) { log_ += std::string(log_.empty() ? "" : ", ") + what; }

  bool isOutside_;
  TriangleMaker maker_;
  std::vector<std::unique_ptr<Stage>> stages_;
  std::vector<std::vector<IDispatch*>> lists_;  ///< of the stages, without the probes
  std::vector<bool> isLastProbeLast_;
  std::vector<Item> items_;
  std::vector<ComPtr<IDispatch>> scenery_;  ///< labels and sprites, used again and again
  std::unique_ptr<Probes> probes_;
  std::size_t drawn_ = 0;  ///< the stage that is being drawn
  bool isNested_ = false;
  bool hasMeddlers_ = false;  ///< in few scenes: each combination of states makes software OpenGL
                              ///< compile for long
  bool outlinesAmongMeddlers_ = false;
  std::string log_;
};

}  // namespace zyn::test
