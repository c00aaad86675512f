#include "workspace/KX_Earlier_Tunes.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "platform/folders.h"
#include "platform/seams.h"
#include "settings/image.h"
#include "settings/message.h"
#include "widgets/form_helpers.h"
#include "workspace/differences.h"
#include "workspace/setting_file_commands.h"

namespace kx {
namespace {

enum Column { time_column, name_column, origin_column, differing_column, columns };

constexpr int width_in_characters = 115;
constexpr int height_in_lines = 26;
constexpr int name_width_in_characters = 26;

constexpr const char* differing_tip =
    "Entries, controls and bytes in which this tune differs from the one on screen; 0 for none";

/// After the last change: a drag changes the tune faster than fifty tunes are compared.
constexpr int count_delay_milliseconds = 150;

QPushButton* Button(const char* name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  button->setAutoDefault(true);
  return button;
}

QTreeWidget* Make_List() {
  auto* list = new QTreeWidget;
  list->setObjectName("earlier_tunes_list");
  list->setColumnCount(columns);
  list->setHeaderLabels({"Kept at", "Name", "Came from", "Differences"});
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAllColumnsShowFocus(true);
  list->setTextElideMode(Qt::ElideMiddle);
  list->headerItem()->setToolTip(time_column, "When another tune took its place, or the program was closed");
  list->headerItem()->setToolTip(name_column, "Name of its file at that time");
  list->headerItem()->setToolTip(origin_column, "Folder of its file, or what it was read from");
  list->headerItem()->setToolTip(differing_column, differing_tip);
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(origin_column, QHeaderView::Stretch);
  list->header()->setMinimumSectionSize(list->fontMetrics().averageCharWidth() * 8);
  return list;
}

/// The whole of what a column may have cut off, with the description.
QString Tip_Of(const Earlier_Tune& kept) {
  const Tune_Copy& tune = kept.tune;
  const QString description = Text(tune.description).trimmed().toHtmlEscaped().replace("\r\n", "<br>");
  QString tip = "<p><b>" + Text(tune.name).toHtmlEscaped() + "</b>, " + Text(tune.time) + "<br>" +
                Text(tune.origin).toHtmlEscaped() + "</p>";
  if (!description.isEmpty()) tip += "<p>" + description + "</p>";
  return tip;
}

QTreeWidgetItem* Row_Of(const Earlier_Tune& kept) {
  auto* row = new QTreeWidgetItem({Text(kept.tune.time), Text(kept.tune.name), Text(kept.tune.origin)});
  for (int column = 0; column < differing_column; ++column) row->setToolTip(column, Tip_Of(kept));
  row->setTextAlignment(differing_column, Qt::AlignRight | Qt::AlignVCenter);
  row->setToolTip(differing_column, differing_tip);
  return row;
}

}  // namespace

KX_Earlier_Tunes::KX_Earlier_Tunes(QWidget* parent)
    : QWidget(parent, Qt::Window), text_(Named_Text("earlier_tunes_text")), list_(Make_List()) {
  setObjectName("KX_Earlier_Tunes");
  counting_.setSingleShot(true);
  counting_.setInterval(count_delay_milliseconds);
  connect(&counting_, &QTimer::timeout, this, [this] { Guarded([this] { Count_Differences(); }); });
  setWindowTitle("Earlier tunes");
  auto* all = new QVBoxLayout(this);
  all->addWidget(text_);
  all->addWidget(list_, 1);
  all->addWidget(Make_Buttons());
  connect(list_, &QTreeWidget::itemActivated, this, &KX_Earlier_Tunes::Open_Chosen);
  connect(list_, &QTreeWidget::currentItemChanged, this,
          [this](const QTreeWidgetItem* row) { open_->setEnabled(row != nullptr); });
  const int character = fontMetrics().averageCharWidth();
  list_->setColumnWidth(name_column, character * name_width_in_characters);
  resize(character * width_in_characters, fontMetrics().height() * height_in_lines);
}

QWidget* KX_Earlier_Tunes::Make_Buttons() {
  auto* line = new QWidget;
  auto* layout = new QHBoxLayout(line);
  layout->setContentsMargins(0, 0, 0, 0);
  open_ =
      Button("cmd_Open_Earlier", "&Open",
             "Opens the chosen tune like a file; Undo goes back. It is saved under a name with its time.");
  open_->setEnabled(false);
  folder_ = Button("cmd_Open_Earlier_Folder", "Open &folder", "Shows the folder in which these files lie");
  auto* leave = Button("cmd_Close_Earlier", "&Close", "Closes this window");
  On_Click(open_, [this] { Open_Chosen(); });
  On_Click(folder_, [] { platform::seams.desktop->Open_With_Handler(Earlier_Tunes_Folder()); });
  connect(leave, &QPushButton::clicked, this, &QWidget::close);
  layout->addWidget(open_);
  layout->addWidget(folder_);
  layout->addStretch(1);
  layout->addWidget(leave);
  return line;
}

void KX_Earlier_Tunes::Show_List() {
  Fill();
  list_->setCurrentItem(list_->topLevelItem(0));
  list_->setFocus();
}

void KX_Earlier_Tunes::Fill() {
  changes_ = Earlier_Tunes_Changes();
  tunes_ = Earlier_Tunes();
  list_->clear();
  for (const Earlier_Tune& kept : tunes_) list_->addTopLevelItem(Row_Of(kept));
  Count_Differences();
  text_->setText(QString(tunes_.empty() ? "None yet. " : "") +
                 "A tune is kept here when another one takes its place or the program closes. The newest " +
                 QString::number(earlier_tunes_kept) + " stay.");
  list_->resizeColumnToContents(time_column);
  list_->resizeColumnToContents(differing_column);
  open_->setEnabled(false);
  folder_->setEnabled(platform::Exists(Earlier_Tunes_Folder()));
}

/// A tune has been kept while the window is open: the rows move down, and the choice goes with its own.
void KX_Earlier_Tunes::Fill_Again() {
  const std::string chosen = Chosen_Path();
  Fill();
  for (std::size_t i = 0; i < tunes_.size(); ++i) {
    if (tunes_[i].path == chosen) list_->setCurrentItem(list_->topLevelItem(static_cast<int>(i)));
  }
}

void KX_Earlier_Tunes::Show_Differences() {
  if (!isVisible()) return;
  if (changes_ != Earlier_Tunes_Changes()) return Fill_Again();
  counting_.start();
}

void KX_Earlier_Tunes::Count_Differences() {
  const Byte_Image now = Stamped(CardByte);
  for (std::size_t i = 0; i < tunes_.size(); ++i) {
    const auto differing = Differences(tunes_[i].tune.image, now).size();
    list_->topLevelItem(static_cast<int>(i))->setText(differing_column, QString::number(differing));
  }
}

/// Empty without a choice.
std::string KX_Earlier_Tunes::Chosen_Path() const {
  const int row = list_->indexOfTopLevelItem(list_->currentItem());
  return row < 0 ? "" : tunes_[static_cast<std::size_t>(row)].path;
}

/// The window goes first: what the file asks for stands over the main form. A file that another program has
/// cleared away leaves the list.
void KX_Earlier_Tunes::Open_Chosen() {
  const std::string path = Chosen_Path();
  if (path.empty()) return;
  if (!platform::Exists(path)) {
    Fill_Again();
    return Tell(path + " is not there any more.");
  }
  close();
  Guarded([&path] { Open_Setting_File(path); });
}

}  // namespace kx
