// Qwt: a curve with the attributes for many points.

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>

#include <QApplication>
#include <stdexcept>

#include "Scenes.h"
#include "Steps.h"

namespace {

class Trace : public Scene {
 public:
  Trace() : plot_(new QwtPlot), curve_(new QwtPlotCurve) {
    plot_->setWindowFlags(Qt::FramelessWindowHint);
    plot_->resize(scenes::kWidth, scenes::kHeight);
    plot_->setCanvasBackground(Qt::white);
    plot_->show();
    QApplication::processEvents();
  }
  void build() override {
    curve_->setPen(QColor(30, 90, 190));
    curve_->setPaintAttribute(QwtPlotCurve::ClipPolygons);
    curve_->setPaintAttribute(QwtPlotCurve::FilterPoints);
    show();
    curve_->attach(plot_.get());
  }
  void look() override {
    plot_->setAxisScale(QwtPlot::xBottom, 0, 1);
    plot_->setAxisScale(QwtPlot::yLeft, 0, 1);
  }
  void turn() override {
    start_ = start_ < 0.48 ? start_ + 0.02 : 0;
    plot_->setAxisScale(QwtPlot::xBottom, start_, start_ + 0.5);
  }
  void draw() override {
    plot_->replot();
    plot_->repaint();
  }
  bool pick(int x, int y) override {
    const QPoint place = plot_->canvas()->mapFrom(plot_.get(), QPoint(x, y));
    return curve_->closestPoint(place) >= 0;
  }
  void change() override {
    plane_.x.insert(plane_.x.end(), plane_.moreX.begin(), plane_.moreX.end());
    plane_.y.insert(plane_.y.end(), plane_.moreY.begin(), plane_.moreY.end());
    show();
  }
  void save(const std::string& path) override {
    if (!plot_->grab().save(QString::fromStdString(path))) {
      throw std::runtime_error(path);
    }
  }

 private:
  void show() {
    curve_->setRawSamples(plane_.x.data(), plane_.y.data(), static_cast<int>(plane_.x.size()));
  }

  scenes::Plane plane_ = scenes::trace();
  std::unique_ptr<QwtPlot> plot_;
  QwtPlotCurve* curve_;  // the plot's
  double start_ = 0;
};

}  // namespace

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  return measure(count, arguments, {{"trace", makes<Trace>()}});
}
