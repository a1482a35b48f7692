#include "host/window/layer_panel.h"

#include <QHeaderView>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "brx/db_tables.h"
#include "host/database/palette.h"
#include "platform/text/letters.h"

namespace host {
namespace {

constexpr std::uint32_t contrastIndex = 7;
/// Of the column of names, in pixels.
constexpr int widestName = 320;

QIcon swatch(const QColor& colour) {
  QPixmap square(14, 14);
  square.fill(colour);
  QPainter painter(&square);
  painter.setPen(Qt::gray);
  painter.drawRect(0, 0, 13, 13);
  return QIcon(square);
}

}  // namespace

LayerPanel::LayerPanel(Listener listener) : listener_(std::move(listener)) {
  setObjectName(QStringLiteral("layers"));
  setHeaderLabels({QStringLiteral("Layer"), QStringLiteral("On"), QStringLiteral("Frozen"),
                   QStringLiteral("Locked"), QStringLiteral("Colour")});
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setFocusPolicy(Qt::ClickFocus);
  setMinimumSize(1, 1);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
  for (const int each : {onColumn, frozenColumn, lockedColumn, colourColumn}) {
    header()->setSectionResizeMode(each, QHeaderView::ResizeToContents);
  }
  connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int column) {
    if (column != nameColumn) onClick(item, column);
  });
  connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item, int column) {
    if (column == nameColumn) onClick(item, column);
  });
}

std::vector<LayerPanel::Row> LayerPanel::rowsOf(AcDbDatabase* drawing) {
  std::vector<Row> rows;
  if (!drawing) return rows;
  const AcDbObjectPointer<AcDbLayerTable> table(drawing->tableId(AcDbLayerTable::desc()));
  if (!table.object()) return rows;
  for (const AcDbObjectId& id : table->recordIds()) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    if (!layer.object()) continue;
    const AcCmColor colour = layer->color();
    rows.push_back({layer->getName(), id == drawing->clayer(), layer->isOff(), layer->isFrozen(),
                    layer->isLocked(), colour.isByColor(),
                    colour.isByColor() ? colour.rgb() : colour.colorIndex()});
  }
  std::sort(rows.begin(), rows.end(),
            [](const Row& a, const Row& b) { return upperCased(a.name) < upperCased(b.name); });
  return rows;
}

void LayerPanel::show(QTreeWidgetItem& item, const Row& row) {
  QFont font = item.font(nameColumn);
  font.setBold(row.current);
  item.setFont(nameColumn, font);
  item.setText(nameColumn,
               (row.current ? QStringLiteral("\u25b8 ") : QString()) + QString::fromStdWString(row.name));
  item.setToolTip(nameColumn, QString::fromStdWString(row.name) +
                                  QStringLiteral("\nDouble-click the name to make the layer current"));
  item.setCheckState(onColumn, row.off ? Qt::Unchecked : Qt::Checked);
  item.setCheckState(frozenColumn, row.frozen ? Qt::Checked : Qt::Unchecked);
  item.setCheckState(lockedColumn, row.locked ? Qt::Checked : Qt::Unchecked);
  const bool isContrast = !row.exact && row.colour == contrastIndex;
  item.setIcon(colourColumn,
               swatch(isContrast ? palette().color(QPalette::Text)
                                 : QColor::fromRgb(row.exact ? row.colour : colourOfIndex(row.colour))));
  item.setText(colourColumn, row.exact ? QStringLiteral("mixed") : QString::number(row.colour));
}

void LayerPanel::refresh() {
  std::vector<Row> now = rowsOf(acdbHostWorkingDatabase());
  if (now == rows_) return;
  const bool sameNames = std::equal(now.begin(), now.end(), rows_.begin(), rows_.end(),
                                    [](const Row& a, const Row& b) { return a.name == b.name; });
  rows_ = std::move(now);
  if (!sameNames) {
    clear();
    QList<QTreeWidgetItem*> items;
    for (size_t i = 0; i < rows_.size(); ++i) {
      items << new QTreeWidgetItem;
      // Check boxes show what is; clicks come to `onClick`.
      items.back()->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }
    addTopLevelItems(items);
  }
  for (size_t i = 0; i < rows_.size(); ++i) show(*topLevelItem(static_cast<int>(i)), rows_[i]);
  measure();
}

void LayerPanel::measure() {
  wantedWidth_ = std::min(sizeHintForColumn(nameColumn), widestName) + 2 * frameWidth() +
                 style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  for (const int each : {onColumn, frozenColumn, lockedColumn, colourColumn}) {
    wantedWidth_ += std::max(sizeHintForColumn(each), header()->sectionSizeHint(each));
  }
}

QStringList LayerPanel::shownNames() const {
  QStringList names;
  const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
  for (int i = 0; i < topLevelItemCount(); ++i) {
    const QTreeWidgetItem& item = *topLevelItem(i);
    names << QFontMetrics(item.font(nameColumn))
                 .elidedText(item.text(nameColumn), textElideMode(), columnWidth(nameColumn) - 2 * margin);
  }
  return names;
}

void LayerPanel::onClick(QTreeWidgetItem* item, int column) {
  const size_t place = static_cast<size_t>(indexOfTopLevelItem(item));
  if (place >= rows_.size()) return;
  const Row& row = rows_[place];
  switch (column) {
    case nameColumn:
      return listener_(row.name, Change::current);
    case onColumn:
      return listener_(row.name, row.off ? Change::on : Change::off);
    case frozenColumn:
      return listener_(row.name, row.frozen ? Change::thaw : Change::freeze);
    case lockedColumn:
      return listener_(row.name, row.locked ? Change::unlock : Change::lock);
    default:
      return listener_(row.name, Change::colour);
  }
}

bool LayerPanel::click(const std::wstring& layer, int column) {
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i].name != layer) continue;
    onClick(topLevelItem(static_cast<int>(i)), column);
    return true;
  }
  return false;
}

}  // namespace host
