#include "MainWindow.h"

#include "CatalogueHistory.h"
#include "CatalogueWatcher.h"
#include "CdKeys.h"
#include "Collection.h"
#include "CollectionsPanel.h"
#include "Entry.h"
#include "DiscMenu.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "FieldTypes.h"
#include "HostKeys.h"
#include "LibraryImportDialog.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "PageView.h"
#include "PreferencesDialog.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "SettingsKeys.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
const QString geometryKey = QStringLiteral("Window Geometry");
const QString splitterKey = QStringLiteral("Window Splitter");
const QString searchTypeKey = QStringLiteral("Search Type");
const QString lastCatalogueKey = QStringLiteral("Last Catalogue");
// The search field's menu, in the order a music lover reaches for them.
const QList<int> searchTypes = {1, 3, 4, 6, 10, 7, 8, 11, 9, 12, 5, 40, 42, 43, 100};
}  // namespace

MainWindow::MainWindow(MyController& controller, QtWindowSystem& windowSystem)
    : controller_(controller),
      windowSystem_(windowSystem),
      history_(new CatalogueHistory(controller, this)),
      model_(new EntryTableModel(controller, *history_, this)) {
  setObjectName(QStringLiteral("mainWindow"));
  setWindowTitle(QStringLiteral("Discary"));
  setAcceptDrops(true);
  windowSystem_.setWindow(this);
  connect(&windowSystem_, &QtWindowSystem::footerChanged, this, &MainWindow::showFooter);
  connect(&windowSystem_, &QtWindowSystem::entriesChanged, this, [this] {
    collections_->reload();
    collections_->selectCollection(controller_.collections().selectedCollection());
    const std::vector<Entry*> selected = controller_.entriesController().selectedObjects();
    model_->reload();
    selectEntries(selected);
  });

  collections_ = new CollectionsPanel(controller_, this);
  collections_->setObjectName(QStringLiteral("collections"));
  page_ = new PageView(controller_.preferencesStandard(), this);
  page_->setObjectName(QStringLiteral("page"));
  page_->setOpenLinks(false);
  page_->setFocusPolicy(Qt::StrongFocus);
  windowSystem_.setPageView(page_);
  connect(page_, &QTextBrowser::anchorClicked, this, &MainWindow::pageLinkClicked);

  splitter_ = new QSplitter(this);
  splitter_->addWidget(collections_);
  splitter_->addWidget(buildListPane());
  splitter_->addWidget(page_);
  splitter_->setStretchFactor(1, 3);
  splitter_->setStretchFactor(2, 2);
  splitter_->setSizes({180, 640, 420});
  setCentralWidget(splitter_);

  buildMenus();
  connect(collections_, &CollectionsPanel::collectionChosen, this, &MainWindow::showCollection);
  connect(collections_, &CollectionsPanel::entriesDropped, this, &MainWindow::dropEntries);
  connect(history_, &CatalogueHistory::stepApplied, this, &MainWindow::showUndoneStep);
  // An edit in the list changes the footer's totals and the shown page.
  connect(model_, &QAbstractItemModel::dataChanged, this, &MainWindow::selectionChanged);
  restoreState();
  collections_->reload();
  refreshList();
  watcher_ = new CatalogueWatcher(
      controller_, [this](const Store::OutsideChanges& changes) { showOutsideChanges(changes); }, this);
}

QWidget* MainWindow::buildListPane() {
  auto* pane = new QWidget(this);
  list_ = new QTableView(pane);
  list_->setObjectName(QStringLiteral("entries"));
  list_->setModel(model_);
  list_->setSortingEnabled(true);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  // Double-click opens the panel; F2 edits a text cell in place.
  list_->setEditTriggers(QAbstractItemView::EditKeyPressed);
  list_->setDragEnabled(true);
  list_->setDragDropMode(QAbstractItemView::DragOnly);
  list_->setAlternatingRowColors(true);
  list_->setShowGrid(false);
  list_->setWordWrap(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(list_->fontMetrics().height() + 8);
  list_->horizontalHeader()->setSectionsMovable(true);
  list_->horizontalHeader()->setStretchLastSection(true);
  list_->horizontalHeader()->setHighlightSections(false);
  list_->horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_->horizontalHeader(), &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { columnsMenu_->popup(list_->horizontalHeader()->mapToGlobal(at)); });
  connect(list_->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
    controller_.fieldsController()->setClickedField(model_->columns().value(section));
  });
  connect(list_, &QTableView::doubleClicked, this, [this] { editEntry(); });
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainWindow::selectionChanged);
  connect(model_, &QAbstractItemModel::modelReset, this, [this] {
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainWindow::selectionChanged,
            Qt::UniqueConnection);
  });

  footer_ = new QLabel(pane);
  footer_->setObjectName(QStringLiteral("footer"));
  footer_->setContentsMargins(6, 3, 6, 3);
  footer_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* layout = new QVBoxLayout(pane);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(list_);
  layout->addWidget(footer_);
  return pane;
}

void MainWindow::buildMenus() {
  auto action = [this](QMenu* menu, const QString& text, const QKeySequence& keys, auto slot) {
    QAction* a = menu->addAction(text, this, slot);
    a->setShortcut(keys);
    return a;
  };
  QMenu* file = menuBar()->addMenu(tr("&File"));
  action(file, tr("&New Catalogue…"), QKeySequence(), &MainWindow::newCatalogue);
  action(file, tr("&Open Catalogue…"), QKeySequence::Open, &MainWindow::openCatalogue);
  file->addSeparator();
  action(file, tr("&Import…"), QKeySequence(tr("Ctrl+Shift+I")), [this] {
    history_->record(tr("Import"), {}, [this] { controller_.importCollection(); });
    reloadAll();
  });
  action(file, tr("Import Music &Library…"), QKeySequence(), [this] {
    bool imported = false;
    history_->record(tr("Import Music Library"), {}, [&] { imported = LibraryImportDialog::run(controller_, this); });
    if (!imported) return;
    collections_->reload();
    refreshList();
  });
  file->addSeparator();
  // With the entry page focused this prints the page; otherwise the collection, in a layout.
  action(file, tr("&Print…"), QKeySequence::Print, [this] { controller_.printCollection(); });
  file->addSeparator();
  QAction* preferences = action(file, tr("&Preferences…"), QKeySequence::Preferences, &MainWindow::showPreferences);
  preferences->setMenuRole(QAction::PreferencesRole);
  preferences->setObjectName(QStringLiteral("preferences"));
  file->addSeparator();
  action(file, tr("&Quit"), QKeySequence::Quit, &QWidget::close);

  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  // The stack's actions name the step ("Undo Delete") and are off when there is none.
  QAction* undo = history_->stack().createUndoAction(this, tr("&Undo"));
  undo->setShortcuts(QKeySequence::Undo);
  undo->setObjectName(QStringLiteral("undo"));
  QAction* redo = history_->stack().createRedoAction(this, tr("&Redo"));
  redo->setShortcuts(QKeySequence::Redo);
  redo->setObjectName(QStringLiteral("redo"));
  edit->addAction(undo);
  edit->addAction(redo);
  edit->addSeparator();
  QAction* add = action(edit, tr("&Add Entry…"), QKeySequence::New, &MainWindow::addEntry);
  QAction* change = action(edit, tr("&Edit Entry…"), QKeySequence(Qt::CTRL | Qt::Key_E), &MainWindow::editEntry);
  QAction* remove = action(edit, tr("&Delete Entries"), QKeySequence::Delete, &MainWindow::deleteSelectedEntries);
  edit->addSeparator();
  action(edit, tr("Select &All"), QKeySequence::SelectAll, [this] { list_->selectAll(); });
  action(edit, tr("&Find"), QKeySequence::Find, [this] {
    search_->setFocus();
    search_->selectAll();
  });

  QMenu* view = menuBar()->addMenu(tr("&View"));
  columnsMenu_ = view->addMenu(tr("&Columns"));
  filterMenu_ = view->addMenu(tr("&Filter"));
  connect(columnsMenu_, &QMenu::aboutToShow, this, &MainWindow::fillColumnsMenu);
  connect(filterMenu_, &QMenu::aboutToShow, this, &MainWindow::fillFilterMenu);

  QMenu* collections = menuBar()->addMenu(tr("C&ollections"));
  action(collections, tr("&New Collection from Selection…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
         &MainWindow::newCollectionFromSelection);
  action(collections, tr("&Rename Collection…"), QKeySequence(), &MainWindow::renameCollection);
  action(collections, tr("&Delete Collection"), QKeySequence(), &MainWindow::deleteCollection);

  auto* disc = new DiscMenu(controller_, *history_, this, menuBar()->addMenu(tr("&Disc")));
  // Texts and result pages handed to the application open the panel (the one site there is).
  connect(&windowSystem_, &QtWindowSystem::internetSearchRequested, disc,
          [disc](const QString& text, const QString&) { disc->internetSearch(text); });

  QMenu* help = menuBar()->addMenu(tr("&Help"));
  action(help, tr("&About Discary"), QKeySequence(), [this] {
    QMessageBox::about(this, tr("About Discary"),
                       tr("<b>Discary %1</b><p>A catalogue of your music collection.</p>").arg(QStringLiteral(DISCARY_VERSION)));
  });

  QToolBar* tools = addToolBar(tr("Tools"));
  tools->setObjectName(QStringLiteral("tools"));
  tools->setMovable(false);
  tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  add->setIcon(QIcon::fromTheme(QStringLiteral("list-add")));
  change->setIcon(QIcon::fromTheme(QStringLiteral("document-edit")));
  remove->setIcon(QIcon::fromTheme(QStringLiteral("list-remove")));
  tools->addAction(add);
  tools->addAction(change);
  tools->addAction(remove);
  auto* filterButton = new QToolButton(tools);
  filterButton->setText(tr("Filter"));
  filterButton->setMenu(filterMenu_);
  filterButton->setPopupMode(QToolButton::InstantPopup);
  tools->addWidget(filterButton);
  auto* spacer = new QWidget(tools);
  spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  tools->addWidget(spacer);

  search_ = new QLineEdit(tools);
  search_->setObjectName(QStringLiteral("search"));
  search_->setClearButtonEnabled(true);
  search_->setMinimumWidth(240);
  searchMenu_ = new QMenu(search_);
  for (int type : searchTypes) {
    QString label = controller_.labelForSearchType(type);
    if (label == controller_.labelForSearchType(2))  // the generic label: name the field it searches
      label = tr("Search %1").arg(type == 100 ? tr("the Clicked Column")
                                              : controller_.fieldsController()->localizedColumnName(
                                                    controller_.searchIdentifierForSearchType(type)));
    QAction* a = searchMenu_->addAction(label, this, [this, type] { setSearchType(type); });
    a->setCheckable(true);
    a->setData(type);
  }
  QAction* menuAction = search_->addAction(QIcon::fromTheme(QStringLiteral("edit-find")), QLineEdit::LeadingPosition);
  connect(menuAction, &QAction::triggered, this, [this] { searchMenu_->popup(search_->mapToGlobal(QPoint(0, search_->height()))); });
  connect(search_, &QLineEdit::textChanged, this, &MainWindow::runSearch);
  tools->addWidget(search_);
}

void MainWindow::setSearchType(int type) {
  searchType_ = type;
  for (QAction* a : searchMenu_->actions()) a->setChecked(a->data().toInt() == type);
  search_->setPlaceholderText(searchMenu_->actions().value(int(searchTypes.indexOf(type)))->text());
  controller_.preferencesStandard().setObject(searchTypeKey, type);
  runSearch();
}

void MainWindow::runSearch() {
  controller_.search(search_->text(), searchType_);
  refreshList();
}

void MainWindow::restoreState() {
  Settings& settings = controller_.preferencesStandard();
  restoreGeometry(QByteArray::fromBase64(settings.stringForKey(geometryKey).toLatin1()));
  splitter_->restoreState(QByteArray::fromBase64(settings.stringForKey(splitterKey).toLatin1()));
  QStringList columns;
  QList<int> widths;
  for (const QVariant& c : settings.objectForKey(SettingsKeys::defaultColumns).toList()) {
    const QString identifier = c.toMap().value(MKIdentifier).toString();
    if (!EntitySchema::cd().has(identifier) || columns.contains(identifier)) continue;
    columns << identifier;
    const double width = c.toMap().value(QStringLiteral("width")).toDouble();
    widths << int(width > 0 ? width : controller_.fieldsController()->widthForColumn(identifier));
  }
  model_->setColumns(columns);
  for (int i = 0; i < widths.size(); ++i) list_->setColumnWidth(i, widths[i]);
  const int type = int(settings.integerForKey(searchTypeKey));
  setSearchType(searchTypes.contains(type) ? type : 1);
  list_->horizontalHeader()->setSortIndicator(int(columns.indexOf(controller_.entriesController().sortKey())),
                                              Qt::AscendingOrder);
}

void MainWindow::saveState() {
  Settings& settings = controller_.preferencesStandard();
  settings.setObject(geometryKey, QString::fromLatin1(saveGeometry().toBase64()));
  settings.setObject(splitterKey, QString::fromLatin1(splitter_->saveState().toBase64()));
  QVariantList columns;
  const QHeaderView* header = list_->horizontalHeader();
  for (int visual = 0; visual < header->count(); ++visual) {
    const int logical = header->logicalIndex(visual);
    columns << QVariantMap{{MKIdentifier, model_->columns().value(logical)}, {QStringLiteral("width"), header->sectionSize(logical)}};
  }
  settings.setObject(SettingsKeys::defaultColumns, columns);
  settings.sync();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  saveState();
  controller_.saveManagedObjectContext();
  event->accept();
}

void MainWindow::refreshList() {
  const std::vector<Entry*> selected = controller_.entriesController().selectedObjects();
  model_->reload();
  selectEntries(selected);
  controller_.refreshCollectionStatistics();
}

void MainWindow::selectEntries(const std::vector<Entry*>& entries) {
  QItemSelection selection;
  for (Entry* e : entries) {
    const int row = model_->rowOf(e);
    if (row >= 0) selection.select(model_->index(row, 0), model_->index(row, model_->columnCount() - 1));
  }
  list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  if (!selection.isEmpty()) list_->scrollTo(selection.indexes().first());
  selectionChanged();
}

void MainWindow::selectionChanged() {
  std::vector<Entry*> selected;
  for (const QModelIndex& row : list_->selectionModel()->selectedRows())
    if (Entry* e = model_->entryAt(row.row())) selected.push_back(e);
  controller_.entriesController().setSelectedObjects(selected);
  controller_.refreshCollectionStatistics();
  showEntryPage(selected.size() == 1 ? selected.front() : nullptr);
}

QTextBrowser* MainWindow::pageView() const { return page_; }

void MainWindow::showEntryPage(Entry* entry) {
  if (!entry) {
    page_->clear();
    return;
  }
  QString html = controller_.templateText(controller_.preferencesStandard().stringForKey(SettingsKeys::infoTemplate));
  controller_.replaceKeysInTemplate(html, *entry, true, true);
  page_->setDataFolder(controller_.dataFolderPath());
  page_->setHtml(html);
}

void MainWindow::showFooter(const QString& footer, qsizetype selectedCount) {
  footer_->setText(selectedCount > 1 ? tr("%1 \u2014 %n selected", nullptr, int(selectedCount)).arg(footer) : footer);
}

void MainWindow::showCollection(Collection* collection) {
  controller_.collections().selectCollection(collection);
  runSearch();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (!urls.isEmpty() && std::all_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); }))
    event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  QStringList paths;
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) paths << url.toLocalFile();
  if (paths.isEmpty()) return;
  event->acceptProposedAction();
  // Opening may show dialogs; leave the drag and drop machinery first.
  QTimer::singleShot(0, this, [this, paths] { importPaths(paths); });
}

void MainWindow::importPaths(const QStringList& paths) {
  history_->record(tr("Import"), {}, [&] {
    for (const QString& path : paths) controller_.openFile(path);
  });
  reloadAll();
}

void MainWindow::reloadAll() {
  collections_->reload();
  runSearch();
}

void MainWindow::showOutsideChanges(const Store::OutsideChanges& changes) {
  if (changes.collections) {
    collections_->reload();
    collections_->selectCollection(controller_.collections().selectedCollection());
  }
  Entry* top = model_->entryAt(list_->rowAt(0));
  const int scrolled = list_->verticalScrollBar()->value();
  const std::vector<Entry*> selected = controller_.entriesController().selectedObjects();
  controller_.search(search_->text(), searchType_);
  model_->reload();
  QItemSelection selection;
  for (Entry* e : selected)
    if (const int row = model_->rowOf(e); row >= 0)
      selection.select(model_->index(row, 0), model_->index(row, model_->columnCount() - 1));
  list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  if (const int row = model_->rowOf(top); row >= 0)
    list_->scrollTo(model_->index(row, 0), QAbstractItemView::PositionAtTop);
  else
    list_->verticalScrollBar()->setValue(scrolled);
  selectionChanged();  // the footer and the entry page
  for (EntryEditor* editor : findChildren<EntryEditor*>()) editor->showOutsideChanges(changes);
}

void MainWindow::pageLinkClicked(const QUrl& url) {
  if (url.scheme() != QLatin1String("folio")) {
    if (url.scheme() != QLatin1String("discary") || !controller_.handleIncomingString(url.toString()))
      QDesktopServices::openUrl(url);
    return;
  }
  // folio://playTrackNamed=NAME[&artist=ARTIST]: play the file linked to that track. The URL's
  // host is lower-cased on the way here, so names compare without regard to case.
  const auto& selected = controller_.entriesController().selectedObjects();
  if (selected.size() != 1) return;
  QString request = QUrl::fromPercentEncoding(url.toString(QUrl::FullyEncoded).mid(8).toUtf8());
  request = request.section(QLatin1Char('&'), 0, 0).section(QLatin1Char('='), 1);
  for (Link* link : selected.front()->linksSortedByPosition()) {
    const QString address = link->stringValue(QStringLiteral("url"));
    if (link->stringValue(QStringLiteral("name")).compare(request, Qt::CaseInsensitive) != 0 &&
        QFileInfo(QUrl(address).toLocalFile()).completeBaseName().compare(request, Qt::CaseInsensitive) != 0)
      continue;
    QDesktopServices::openUrl(address.startsWith(QLatin1String("[Data Folder]"))
                                  ? QUrl::fromLocalFile(controller_.dataFolderPath() + address.mid(13))
                                  : QUrl(address));
    return;
  }
  windowSystem_.displayNotice(tr("No file is linked to “%1”.").arg(request),
                              controller_.preferencesStandard().floatForKey(SettingsKeys::bezelDisplayTime));
}

void MainWindow::openStrings(const QStringList& words) {
  // The files are one import, to undo as one; an entry added from a search is a step of its own.
  QStringList files, others;
  for (const QString& word : words) (QFileInfo::exists(word) || QUrl(word.trimmed()).isLocalFile() ? files : others) << word;
  bool changed = false;
  history_->record(tr("Import"), {}, [&] {
    for (const QString& file : files)
      changed |= QFileInfo::exists(file) ? controller_.openFile(file) : controller_.handleIncomingString(file);
  });
  for (const QString& word : others) changed |= controller_.handleIncomingString(word);
  if (changed) reloadAll();
  if (isMinimized()) showNormal();
  raise();
  activateWindow();
}

void MainWindow::fillColumnsMenu() {
  columnsMenu_->clear();
  for (const QVariant& f : controller_.fieldsController()->columnFields()) {
    const QString identifier = f.toMap().value(MKIdentifier).toString();
    QAction* a = columnsMenu_->addAction(controller_.fieldsController()->localizedColumnName(identifier));
    a->setCheckable(true);
    a->setChecked(model_->columns().contains(identifier));
    connect(a, &QAction::toggled, this, [this, identifier](bool on) { showColumn(identifier, on); });
  }
}

void MainWindow::showColumn(const QString& identifier, bool shown) {
  QStringList columns = model_->columns();
  QList<int> widths;
  for (int i = 0; i < columns.size(); ++i) widths << list_->columnWidth(i);
  const qsizetype at = columns.indexOf(identifier);
  if (shown == (at >= 0)) return;
  if (shown) {
    columns << identifier;
    widths << int(controller_.fieldsController()->widthForColumn(identifier));
  } else {
    columns.removeAt(at);
    widths.removeAt(at);
  }
  model_->setColumns(columns);
  for (int i = 0; i < widths.size(); ++i) list_->setColumnWidth(i, widths[i]);
  saveState();
}

void MainWindow::fillFilterMenu() {
  filterMenu_->clear();
  for (const QVariant& i : controller_.fieldsController()->filterMenuItems()) {
    const QVariantMap item = i.toMap();
    filterMenu_->addAction(item.value(QStringLiteral("name")).toString(), this, [this, item] { chooseFilter(item); });
  }
}

void MainWindow::chooseFilter(const QVariantMap& item) {
  if (item.value(QStringLiteral("action")).toInt() != FilterActionValue) {
    applyFilter(item);
    return;
  }
  const QString field = item.value(QStringLiteral("field")).toString();
  QStringList values;
  QSet<QString> seen;
  for (Entry* e : controller_.collections().entriesIn(controller_.collections().selectedCollection())) {
    const QString v = e->stringValue(field).trimmed();
    if (!v.isEmpty() && !seen.contains(v.toCaseFolded())) {
      seen.insert(v.toCaseFolded());
      values << v;
    }
  }
  values.sort(Qt::CaseInsensitive);
  if (values.isEmpty()) return;
  bool ok = false;
  const QString chosen = QInputDialog::getItem(this, item.value(QStringLiteral("name")).toString(),
                                               controller_.fieldsController()->localizedColumnName(field), values, 0, false, &ok);
  if (ok) applyFilter(item, chosen);
}

void MainWindow::applyFilter(const QVariantMap& item, const QString& value) {
  const QString field = item.value(QStringLiteral("field")).toString();
  QString wanted = value;
  switch (item.value(QStringLiteral("action")).toInt()) {
    case FilterActionSameAsSelected: {
      const auto& selected = controller_.entriesController().selectedObjects();
      if (selected.empty()) return;
      wanted = selected.front()->stringValue(field);
      break;
    }
    case FilterActionValue: break;
    default: wanted.clear();
  }
  if (field.isEmpty() || wanted.isEmpty()) {
    controller_.entriesController().setFilter({});
  } else {
    controller_.entriesController().setFilter([field, wanted](const Entry& e) {
      return e.stringValue(field).compare(wanted, Qt::CaseInsensitive) == 0;
    });
  }
  runSearch();
}

void MainWindow::addEntry() {
  EntryEditor editor(controller_, nullptr, this);
  bool added = false;
  history_->record(tr("Add Entry"), {}, [&] { added = editor.exec() == QDialog::Accepted && editor.entry(); });
  if (!added) return;
  runSearch();
  selectEntries({editor.entry()});
}

void MainWindow::editEntry() {
  const auto selected = controller_.entriesController().selectedObjects();
  if (selected.size() != 1) return;
  EntryEditor editor(controller_, selected.front(), this);
  bool accepted = false;
  history_->record({}, selected, [&] { accepted = editor.exec() == QDialog::Accepted; }, true);
  if (!accepted) return;
  runSearch();
  selectEntries({editor.entry()});  // a new one when the entry was deleted elsewhere meanwhile
}

void MainWindow::deleteSelectedEntries() {
  const auto selected = controller_.entriesController().selectedObjects();
  if (selected.empty()) return;
  const QString question = selected.size() == 1
                               ? tr("Delete \u201C%1\u201D?").arg(selected.front()->stringValue(CdKeys::title))
                               : tr("Delete %n entries?", nullptr, int(selected.size()));
  if (QMessageBox::question(this, tr("Delete"), question, QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel) !=
      QMessageBox::Yes)
    return;
  // The covers are kept too, for the undo to put back.
  history_->record(
      tr("Delete"), selected,
      [&] {
        controller_.deleteEntries(selected);
        controller_.saveManagedObjectContext();
      },
      true);
  runSearch();
}

void MainWindow::newCollectionFromSelection() {
  const auto selected = controller_.entriesController().selectedObjects();
  bool ok = false;
  const QString name = QInputDialog::getText(this, tr("New Collection"), tr("Name:"), QLineEdit::Normal,
                                             controller_.proposedNameForNewCollection(selected), &ok)
                           .trimmed();
  if (!ok || name.isEmpty()) return;
  Collection* created = nullptr;
  history_->record(tr("New Collection"), {}, [&] {
    created = controller_.collections().createCollectionNamed(name, selected);
    controller_.saveManagedObjectContext();
  });
  collections_->reload();
  collections_->selectCollection(created);
}

void MainWindow::renameCollection() {
  Collection* c = collections_->currentCollection();
  if (!c || !c->isUser()) return;
  bool ok = false;
  const QString name = QInputDialog::getText(this, tr("Rename Collection"), tr("Name:"), QLineEdit::Normal, c->name(), &ok).trimmed();
  if (!ok || name.isEmpty() || name == c->name()) return;
  bool renamed = false;
  history_->record(tr("Rename Collection"), {}, [&] {
    renamed = controller_.managedObjectContext().renameCollection(c, name);
    if (renamed) controller_.saveManagedObjectContext();
  });
  if (!renamed) {
    QMessageBox::warning(this, tr("Rename Collection"), tr("There is already a collection named \u201C%1\u201D.").arg(name));
    return;
  }
  collections_->reload();
}

void MainWindow::deleteCollection() {
  Collection* c = collections_->currentCollection();
  if (!c || !c->isUser()) return;
  if (QMessageBox::question(this, tr("Delete Collection"),
                            tr("Delete the collection \u201C%1\u201D? Its entries stay in the catalogue.").arg(c->name())) !=
      QMessageBox::Yes)
    return;
  history_->record(tr("Delete Collection"), {}, [&] {
    controller_.collections().deleteCollection(c);
    controller_.saveManagedObjectContext();
  });
  collections_->reload();
  showCollection(nullptr);
}

void MainWindow::dropEntries(Collection* collection, const QList<qint64>& uids) {
  history_->record(tr("Add to Collection"), {}, [&] {
    for (qint64 uid : uids)
      if (Entry* e = controller_.managedObjectContext().entryWithUID(uid)) controller_.addEntry(e, collection);
    controller_.saveManagedObjectContext();
  });
  if (controller_.collections().selectedCollection() == collection) runSearch();
}

void MainWindow::newCatalogue() {
  const QString path = QFileDialog::getSaveFileName(this, tr("New Catalogue"), QString(), tr("Discary catalogues (*.sqlite)"));
  if (!path.isEmpty()) switchCatalogue(path);
}

void MainWindow::openCatalogue() {
  const QString path = QFileDialog::getOpenFileName(this, tr("Open Catalogue"), QString(), tr("Discary catalogues (*.sqlite)"));
  if (!path.isEmpty()) switchCatalogue(path);
}

void MainWindow::switchCatalogue(const QString& path) {
  // A fresh process opens the other catalogue: nothing of this one can leak into it.
  Settings& settings = controller_.preferencesStandard();
  settings.setObject(lastCatalogueKey, path);
  saveState();
  controller_.saveManagedObjectContext();
  if (QProcess::startDetached(QCoreApplication::applicationFilePath(),
                              {QStringLiteral("--catalogue"), path, QStringLiteral("--settings"), settings.fileName()}))
    close();
}

void MainWindow::showUndoneStep(const QList<qint64>& uids) {
  reloadAll();
  std::vector<Entry*> entries;
  for (qint64 uid : uids)
    if (Entry* e = controller_.managedObjectContext().entryWithUID(uid)) entries.push_back(e);
  selectEntries(entries);
}

void MainWindow::showPreferences() {
  PreferencesDialog dialog(controller_, this);
  if (dialog.exec() != QDialog::Accepted) return;
  refreshList();
}
