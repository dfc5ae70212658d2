// QCustomPlot: a graph with adaptive sampling.

#include <qcustomplot.h>

#include <QApplication>
#include <stdexcept>

#include "Scenes.h"
#include "Steps.h"

namespace {

QVector<double> vectorOf(const std::vector<double>& values) {
  return {values.begin(), values.end()};
}

class Trace : public Scene {
 public:
  Trace() : plot_(new QCustomPlot) {
    plot_->setWindowFlags(Qt::FramelessWindowHint);
    plot_->resize(scenes::kWidth, scenes::kHeight);
    plot_->setPlottingHints(QCP::phFastPolylines | QCP::phImmediateRefresh);
    plot_->show();
    QApplication::processEvents();
  }
  void build() override {
    more_ = {vectorOf(plane_.moreX), vectorOf(plane_.moreY)};
    graph_ = plot_->addGraph();
    graph_->setPen(QPen(QColor(30, 90, 190)));
    graph_->setAntialiased(false);
    graph_->setData(vectorOf(plane_.x), vectorOf(plane_.y), true);
  }
  void look() override {
    plot_->xAxis->setRange(0, 1);
    plot_->yAxis->setRange(0, 1);
  }
  void turn() override {
    start_ = start_ < 0.48 ? start_ + 0.02 : 0;
    plot_->xAxis->setRange(start_, start_ + 0.5);
  }
  void draw() override { plot_->replot(QCustomPlot::rpImmediateRefresh); }
  /// The distance to the line as it is seen.
  bool pick(int x, int y) override { return graph_->selectTest(QPointF(x, y), false) >= 0; }
  void change() override { graph_->addData(more_.first, more_.second, true); }
  void save(const std::string& path) override {
    if (!plot_->savePng(QString::fromStdString(path))) {
      throw std::runtime_error(path);
    }
  }

 private:
  const scenes::Plane plane_ = scenes::trace();
  std::unique_ptr<QCustomPlot> plot_;
  QCPGraph* graph_ = nullptr;
  std::pair<QVector<double>, QVector<double>> more_;
  double start_ = 0;
};

}  // namespace

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  return measure(count, arguments, {{"trace", makes<Trace>()}});
}
