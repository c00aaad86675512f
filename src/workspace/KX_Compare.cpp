#include "workspace/KX_Compare.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelection>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QShortcut>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/form_helpers.h"
#include "widgets/wheel_guard.h"
#include "workspace/compare.h"
#include "workspace/compare_commands.h"

namespace kx {
namespace {

constexpr std::array widths_in_characters{44, 22, 22, 11, 22, 18};

bool Has_All(const Difference_Cells& cells, const QStringList& words) {
  return std::ranges::all_of(words, [&cells](const QString& word) {
    return std::ranges::any_of(
        cells, [&word](const std::string& cell) { return Text(cell).contains(word, Qt::CaseInsensitive); });
  });
}

QPushButton* Button(const QString& name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tip);
  return button;
}

/// Two entries may have one name: an axis in the unit of a sensor repeats its texts.
bool Same_Place(const Difference& a, const Difference& b) {
  return a.table == b.table && a.row == b.row && a.control == b.control && a.name == b.name;
}

QString Table_Line(const Difference_Cells& cells, const QString& tag) {
  QString line = "<tr>";
  for (const std::string& cell : cells)
    line += "<" + tag + " align=left>" + Text(cell).toHtmlEscaped() + "</" + tag + ">";
  return line + "</tr>";
}

QString Printed(const std::vector<Difference>& rows) {
  QString text = "<h3>" + Text(Compare_Title()).toHtmlEscaped() + "</h3><table cellspacing=0 cellpadding=3>" +
                 Table_Line(Difference_Headings(), "th");
  for (const Difference& row : rows) text += Table_Line(Difference_Row(row), "td");
  return text + "</table>";
}

}  // namespace

void Difference_Model::Fill(const QString& filter) {
  const QStringList words = filter.split(' ', Qt::SkipEmptyParts);
  beginResetModel();
  headings_ = Difference_Headings();
  rows_.clear();
  cells_.clear();
  for (const Difference& difference : Shown_Differences()) {
    Difference_Cells cells = Difference_Row(difference);
    if (!Has_All(cells, words)) continue;
    rows_.push_back(difference);
    cells_.push_back(std::move(cells));
  }
  endResetModel();
}

int Difference_Model::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int Difference_Model::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : difference_columns;
}

QVariant Difference_Model::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const auto& cells = cells_[static_cast<std::size_t>(index.row())];
  return Text(cells[static_cast<std::size_t>(index.column())]);
}

QVariant Difference_Model::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  return Text(headings_[static_cast<std::size_t>(section)]);
}

KX_Compare::KX_Compare(QWidget* parent)
    : QMainWindow(parent),
      model_(new Difference_Model(this)),
      list_(new QTableView),
      filter_(new QLineEdit),
      title_(new QLabel) {
  setObjectName("KX_Compare");
  title_->setObjectName("compare_title");
  title_->setWordWrap(true);
  filter_->setObjectName("difference_filter");
  filter_->setPlaceholderText("Filter: words that a row must hold");
  filter_->setToolTip("Shows only rows that hold all these words, such as: fuel ms");
  filter_->setClearButtonEnabled(true);
  connect(filter_, &QLineEdit::textChanged, this, &KX_Compare::Fill);
  Make_List();
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(title_);
  layout->addWidget(filter_);
  layout->addWidget(list_, 1);
  layout->addWidget(Make_Buttons());
  setCentralWidget(page);
  Make_Menus();
  Guard_Wheels_In(this);
  resize(fontMetrics().averageCharWidth() * 146, fontMetrics().height() * 28);
}

void KX_Compare::Make_List() {
  list_->setObjectName("difference_list");
  list_->setModel(model_);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setTabKeyNavigation(false);
  list_->setWordWrap(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(list_->fontMetrics().height() + 6);
  list_->horizontalHeader()->setStretchLastSection(true);
  list_->horizontalHeader()->setHighlightSections(false);
  for (int column = 0; column < difference_columns; ++column) {
    list_->setColumnWidth(column, list_->fontMetrics().averageCharWidth() *
                                      widths_in_characters[static_cast<std::size_t>(column)]);
  }
  connect(list_, &QTableView::doubleClicked, this, &KX_Compare::Go_To_Current);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(QKeySequence(key), list_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, &KX_Compare::Go_To_Current);
  }
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &KX_Compare::Enable_Buttons);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, &KX_Compare::Enable_Buttons);
}

QWidget* KX_Compare::Make_Buttons() {
  take_ = Button("take_from_reference", "&Take from reference",
                 "Brings the bytes of the selected rows from the reference into the tune; one step back");
  On_Click(take_, [this] { Take([this] { Take_From_Reference(Selected()); }); });
  take_table_ =
      Button("take_table", "Take &whole table",
             "The same for every entry of the table that the current row belongs to, also of those that the "
             "filter hides");
  On_Click(take_table_, [this] {
    Take([table = model_->At(list_->currentIndex().row()).table] { Take_Table_From_Reference(*table); });
  });
  go_to_ = Button("go_to_place", "&Go to", "Shows where the current row stands: Enter or a double click");
  On_Click(go_to_, [this] { Go_To_Current(); });
  auto* buttons = new QWidget;
  auto* layout = new QHBoxLayout(buttons);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(take_);
  layout->addWidget(take_table_);
  layout->addWidget(go_to_);
  layout->addStretch(1);
  return buttons;
}

/// The keys stay with the list: a button that has nothing more to take would give them away.
void KX_Compare::Take(const std::function<void()>& take) {
  list_->setFocus();
  take();
}

void KX_Compare::Make_Menus() {
  QMenu* file = menuBar()->addMenu("&File");
  Add_Entry(file, "Export_differences", "&Export...", QKeySequence("Ctrl+E"),
            [this] { Export_Differences(model_->All()); });
  Add_Entry(file, "Print_differences", "&Print...", QKeySequence::Print, [this] { Print(); });
  QMenu* edit = menuBar()->addMenu("&Edit");
  Add_Entry(edit, "Copy_differences", "&Copy", QKeySequence::Copy, [this] { Copy_Differences(Selected()); });
  Add_Entry(edit, "Select_all_differences", "Select &all", QKeySequence::SelectAll,
            [this] { list_->selectAll(); });
  menu_ = new Compare_Menu(this);
  menuBar()->addMenu(menu_);
}

void KX_Compare::Follow() {
  if (isVisible()) Fill();
}

void KX_Compare::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  Fill();
  if (!list_->selectionModel()->hasSelection()) list_->selectRow(list_->currentIndex().row());
  list_->setFocus();
}

/// What was selected stays so as far as it still differs; so does the place in the list.
void KX_Compare::Fill() {
  setWindowTitle(Text(Compare_Title()));
  title_->setText(windowTitle());
  menu_->Follow();
  const std::vector<Difference> selected = Selected();
  const int current = list_->currentIndex().row();
  model_->Fill(filter_->text());
  QItemSelection selection;
  for (int row = 0; row < model_->rowCount(); ++row) {
    const auto same = [&](const Difference& any) { return Same_Place(any, model_->At(row)); };
    if (std::ranges::none_of(selected, same)) continue;
    selection.select(model_->index(row, 0), model_->index(row, difference_columns - 1));
  }
  const int last = model_->rowCount() - 1;
  if (last >= 0) {
    list_->selectionModel()->setCurrentIndex(model_->index(std::clamp(current, 0, last), 0),
                                             QItemSelectionModel::NoUpdate);
  }
  list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  Enable_Buttons();
}

std::vector<Difference> KX_Compare::Selected() const {
  std::vector<Difference> rows;
  for (int row = 0; row < model_->rowCount(); ++row) {
    if (list_->selectionModel()->isRowSelected(row)) rows.push_back(model_->At(row));
  }
  return rows;
}

void KX_Compare::Enable_Buttons() {
  const QModelIndex current = list_->currentIndex();
  take_->setEnabled(list_->selectionModel()->hasSelection());
  // Not selected: the row has only moved up, and a second click must not take the next table, too.
  const bool chosen = current.isValid() && list_->selectionModel()->isRowSelected(current.row());
  take_table_->setEnabled(chosen && model_->At(current.row()).table.has_value());
  go_to_->setEnabled(current.isValid());
}

void KX_Compare::Go_To_Current() {
  if (!list_->currentIndex().isValid()) return;
  const Difference wanted = model_->At(list_->currentIndex().row());
  emit Place_Wanted(wanted);
}

/// The platform's dialog; without a printer it offers a PDF file.
void KX_Compare::Print() {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  QTextDocument document;
  document.setHtml(Printed(model_->All()));
  document.print(&printer);
}

}  // namespace kx
