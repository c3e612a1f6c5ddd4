#include "MainWindow.h"

#include "AddPanel.h"
#include "CatalogueHistory.h"
#include "CatalogueWatcher.h"
#include "CdKeys.h"
#include "Collection.h"
#include "CollectionsPanel.h"
#include "CoverWell.h"
#include "DuplicatesDialog.h"
#include "Entry.h"
#include "DiscMenu.h"
#include "EmptyCatalogueHint.h"
#include "EntryEditor.h"
#include "EntryTableModel.h"
#include "ExportDialog.h"
#include "FallbackIcons.h"
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
#include "StatisticsDialog.h"
#include "StatusImage.h"
#include "TrackData.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QScrollBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
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
const QString sortKeyKey = QStringLiteral("Window Sort Key");
const QString sortAscendingKey = QStringLiteral("Window Sort Ascending");
const QString collectionKey = QStringLiteral("Window Collection");
const QString selectionKey = QStringLiteral("Window Selection");
// Files and folders of this machine, which File > Import... would take.
bool importable(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return !urls.isEmpty() && std::all_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}
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
  collections_->setAccessibleName(tr("Collections"));
  page_ = new PageView(controller_.preferencesStandard(), this);
  page_->setObjectName(QStringLiteral("page"));
  page_->setOpenLinks(false);
  page_->setFocusPolicy(Qt::StrongFocus);
  page_->setAccessibleName(tr("Entry page"));
  page_->setAccessibleDescription(tr("The selected entry as a page, with its tracks and links"));
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
  collections_->selectCollection(controller_.collections().selectedCollection());
  refreshList();
  watcher_ = new CatalogueWatcher(
      controller_, [this](const Store::OutsideChanges& changes) { showOutsideChanges(changes); }, this);
}

QWidget* MainWindow::buildListPane() {
  auto* pane = new QWidget(this);
  list_ = new QTableView(pane);
  list_->setObjectName(QStringLiteral("entries"));
  list_->setAccessibleName(tr("Entries"));
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
  // Tab moves on to the next part of the window, as in any list; Return opens the entry.
  list_->setTabKeyNavigation(false);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter})
    new QShortcut(QKeySequence(key), list_, this, &MainWindow::editEntry, Qt::WidgetShortcut);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainWindow::selectionChanged);
  connect(model_, &QAbstractItemModel::modelReset, this, [this] {
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainWindow::selectionChanged,
            Qt::UniqueConnection);
  });

  emptyHint_ = new EmptyCatalogueHint(list_);
  footer_ = new QLabel(pane);
  footer_->setObjectName(QStringLiteral("footer"));
  footer_->setAccessibleName(tr("Totals"));
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
  })->setObjectName(QStringLiteral("import"));
  action(file, tr("Import Music &Library…"), QKeySequence(), [this] {
    bool imported = false;
    history_->record(tr("Import Music Library"), {}, [&] { imported = LibraryImportDialog::run(controller_, this); });
    if (!imported) return;
    collections_->reload();
    refreshList();
  });
  file->addSeparator();
  exportAction_ = action(file, tr("&Export…"), QKeySequence(tr("Ctrl+Shift+E")), &MainWindow::exportShown);
  exportAction_->setObjectName(QStringLiteral("export"));
  // With the entry page focused this prints the page; otherwise the collection, in a layout.
  action(file, tr("&Print…"), QKeySequence::Print, [this] {
    windowSystem_.takeChosenPdf();
    controller_.printCollection();
    if (const QString pdf = windowSystem_.takeChosenPdf(); !pdf.isEmpty() && QFileInfo::exists(pdf)) tellWhere(pdf);
  });
  file->addSeparator();
  // Most Linux desktops name no key for preferences; Ctrl+, is the one their applications use.
  const QKeySequence preferencesKeys = QKeySequence(QKeySequence::Preferences).isEmpty()
                                           ? QKeySequence(Qt::CTRL | Qt::Key_Comma)
                                           : QKeySequence(QKeySequence::Preferences);
  QAction* preferences = action(file, tr("&Preferences…"), preferencesKeys, &MainWindow::showPreferences);
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
  editAction_ = action(edit, tr("&Edit Entry…"), QKeySequence(Qt::CTRL | Qt::Key_E), &MainWindow::editEntry);
  deleteAction_ = action(edit, tr("&Delete Entries"), QKeySequence::Delete, &MainWindow::deleteSelectedEntries);
  edit->addSeparator();
  selectAllAction_ = action(edit, tr("Select &All"), QKeySequence::SelectAll, [this] { list_->selectAll(); });
  editAction_->setObjectName(QStringLiteral("editEntry"));
  deleteAction_->setObjectName(QStringLiteral("deleteEntries"));
  action(edit, tr("&Find"), QKeySequence::Find, [this] {
    search_->setFocus();
    search_->selectAll();
  });

  QMenu* view = menuBar()->addMenu(tr("&View"));
  columnsMenu_ = view->addMenu(tr("&Columns"));
  filterMenu_ = view->addMenu(tr("&Filter"));
  connect(columnsMenu_, &QMenu::aboutToShow, this, &MainWindow::fillColumnsMenu);
  connect(filterMenu_, &QMenu::aboutToShow, this, &MainWindow::fillFilterMenu);
  view->addSeparator();
  action(view, tr("&Statistics…"), QKeySequence(), &MainWindow::showStatistics)->setObjectName(QStringLiteral("showStatistics"));
  action(view, tr("D&uplicates…"), QKeySequence(), &MainWindow::showDuplicates)->setObjectName(QStringLiteral("showDuplicates"));

  QMenu* collections = menuBar()->addMenu(tr("C&ollections"));
  action(collections, tr("&New Collection from Selection…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
         &MainWindow::newCollectionFromSelection);
  renameCollectionAction_ = action(collections, tr("&Rename Collection…"), QKeySequence(), &MainWindow::renameCollection);
  deleteCollectionAction_ = action(collections, tr("&Delete Collection"), QKeySequence(), &MainWindow::deleteCollection);
  renameCollectionAction_->setObjectName(QStringLiteral("renameCollection"));
  deleteCollectionAction_->setObjectName(QStringLiteral("deleteCollection"));

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
  add->setIcon(FallbackIcons::named(QStringLiteral("list-add")));
  editAction_->setIcon(FallbackIcons::named(QStringLiteral("document-edit")));
  deleteAction_->setIcon(FallbackIcons::named(QStringLiteral("list-remove")));
  tools->addAction(add);
  tools->addAction(editAction_);
  tools->addAction(deleteAction_);
  filterButton_ = new QToolButton(tools);
  filterButton_->setObjectName(QStringLiteral("filterButton"));
  filterButton_->setText(tr("Filter"));
  filterButton_->setMenu(filterMenu_);
  filterButton_->setPopupMode(QToolButton::InstantPopup);
  tools->addWidget(filterButton_);
  clearFilter_ = tools->addAction(tr("Show All"), this, [this] { applyFilter({}); });
  clearFilter_->setObjectName(QStringLiteral("clearFilter"));
  clearFilter_->setToolTip(tr("Clear the filter"));
  clearFilter_->setVisible(false);
  auto* spacer = new QWidget(tools);
  spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  tools->addWidget(spacer);

  search_ = new QLineEdit(tools);
  search_->setObjectName(QStringLiteral("search"));
  search_->setAccessibleName(tr("Search"));
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
  QAction* menuAction = search_->addAction(FallbackIcons::find(), QLineEdit::LeadingPosition);
  connect(menuAction, &QAction::triggered, this, [this] { searchMenu_->popup(search_->mapToGlobal(QPoint(0, search_->height()))); });
  connect(search_, &QLineEdit::textChanged, this, &MainWindow::runSearch);
  // What the field searches stays in sight while one types, unlike the placeholder.
  searchTypeButton_ = new QToolButton(tools);
  searchTypeButton_->setObjectName(QStringLiteral("searchType"));
  searchTypeButton_->setAccessibleName(tr("What to search"));
  menuAction->setToolTip(tr("What to search"));
  searchTypeButton_->setMenu(searchMenu_);
  searchTypeButton_->setPopupMode(QToolButton::InstantPopup);
  tools->addWidget(searchTypeButton_);
  tools->addWidget(search_);
  // Tab reads the window as the eye does: the tool bar's controls, then the panes left to right.
  setTabOrder(filterButton_, searchTypeButton_);
  setTabOrder(searchTypeButton_, search_);
  setTabOrder(search_, collections_);
  setTabOrder(collections_, list_);
  setTabOrder(list_, page_);
}

void MainWindow::setSearchType(int type) {
  searchType_ = type;
  for (QAction* a : searchMenu_->actions()) a->setChecked(a->data().toInt() == type);
  const QString label = searchMenu_->actions().value(int(searchTypes.indexOf(type)))->text();
  search_->setPlaceholderText(label);
  searchTypeButton_->setText(label);
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
  // The list as it was left: sorted the same way, in the same collection, the same entries selected.
  if (const QString key = settings.stringForKey(sortKeyKey); EntitySchema::cd().has(key))
    controller_.entriesController().setSortKey(key, !settings.objectForKey(sortAscendingKey).isValid() ||
                                                        settings.boolForKey(sortAscendingKey));
  if (const QString name = settings.stringForKey(collectionKey); !name.isEmpty())
    controller_.collections().selectCollection(controller_.collections().collectionWithName(name, true));
  const int type = int(settings.integerForKey(searchTypeKey));
  setSearchType(searchTypes.contains(type) ? type : 1);
  showSortIndicator();
  std::vector<Entry*> selected;
  for (const QVariant& uid : settings.objectForKey(selectionKey).toList())
    if (Entry* e = controller_.managedObjectContext().entryWithUID(uid.toLongLong())) selected.push_back(e);
  selectEntries(selected);
  if (settings.stringForKey(geometryKey).isEmpty()) {
    // The first window: most of the screen, so that list and page both have room.
    const QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry() : QRect(0, 0, 1280, 800);
    resize(std::min(screen.width() * 9 / 10, 1440), std::min(screen.height() * 9 / 10, 900));
  }
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
  settings.setObject(sortKeyKey, controller_.entriesController().sortKey());
  settings.setObject(sortAscendingKey, controller_.entriesController().sortAscending());
  const Collection* shown = controller_.collections().selectedCollection();
  settings.setObject(collectionKey, shown && shown->isUser() ? shown->name() : QString());
  QVariantList selected;
  for (const Entry* e : controller_.entriesController().selectedObjects()) selected << e->uid();
  settings.setObject(selectionKey, selected);
  settings.sync();
}

// A library read still running would tell a window that is gone.
MainWindow::~MainWindow() { controller_.waitForLibraryRefresh(); }

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
  collections_->refreshCounts();
  emptyHint_->showFor(controller_.managedObjectContext().entries().empty());
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
  updateActions();
}

void MainWindow::updateActions() {
  const size_t selected = controller_.entriesController().selectedObjects().size();
  editAction_->setEnabled(selected == 1);
  deleteAction_->setEnabled(selected > 0);
  selectAllAction_->setEnabled(model_->rowCount() > 0);
  exportAction_->setEnabled(model_->rowCount() > 0);
  const Collection* shown = collections_->currentCollection();
  renameCollectionAction_->setEnabled(shown && shown->isUser());
  deleteCollectionAction_->setEnabled(shown && shown->isUser());
}

QTextBrowser* MainWindow::pageView() const { return page_; }

void MainWindow::showEntryPage(Entry* entry) {
  if (!entry) {
    page_->showPage({});
    return;
  }
  QString html = controller_.templateText(controller_.preferencesStandard().stringForKey(SettingsKeys::infoTemplate));
  // Play links need the player's library; read once, in the background, and the page shown
  // again when it is in.
  if (!libraryAsked_ && html.contains(QLatin1String("[IncludeURLInName]")) && !controller_.addPanel().trackData().libraryLoaded()) {
    libraryAsked_ = true;
    controller_.loadMusicLibrary([this] {
      QMetaObject::invokeMethod(this, [this] {
        const auto& selected = controller_.entriesController().selectedObjects();
        if (selected.size() == 1) showEntryPage(selected.front());
      }, Qt::QueuedConnection);
    });
  }
  controller_.replaceKeysInTemplate(html, *entry, true, true);
  page_->setDataFolder(controller_.dataFolderPath());
  // "folio://playTrackNamed=..." has no valid host, and the view would hand over an empty URL.
  html.replace(QLatin1String("href=\"folio://"), QLatin1String("href=\"folio:"));
  page_->showPage(html);
}

void MainWindow::showFooter(const QString& footer, qsizetype selectedCount) {
  footer_->setText(selectedCount > 1 ? tr("%1 \u2014 %n selected", nullptr, int(selectedCount)).arg(footer) : footer);
}

void MainWindow::showCollection(Collection* collection) {
  controller_.collections().selectCollection(collection);
  runSearch();
}

Entry* MainWindow::entryUnder(const QPointF& at) const {
  const QPoint inList = list_->viewport()->mapFrom(this, at.toPoint());
  if (!list_->viewport()->rect().contains(inList)) return nullptr;
  const QModelIndex index = list_->indexAt(inList);
  return index.isValid() ? model_->entryAt(index.row()) : nullptr;
}

void MainWindow::dragMoveEvent(QDragMoveEvent* event) {
  // A picture over an entry becomes its cover; anywhere else a dropped file is imported.
  const bool cover = entryUnder(event->position()) && !CoverWell::imageIn(*event->mimeData()).isNull();
  if (cover || importable(*event->mimeData())) event->acceptProposedAction();
  else event->ignore();
}

void MainWindow::setCoverOf(Entry& entry, const QImage& cover) {
  if (!controller_.setCoverImage(entry, cover)) {
    windowSystem_.runAlert(tr("The cover could not be set."), tr("It could not be written to the data folder."), {});
    return;
  }
  entry.setValue(CdKeys::dateEdited, QDateTime::currentDateTimeUtc());
  controller_.saveManagedObjectContext();
  selectEntries({&entry});
  showEntryPage(&entry);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (importable(*event->mimeData()) || !CoverWell::imageIn(*event->mimeData()).isNull()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  if (Entry* entry = entryUnder(event->position())) {
    if (const QImage cover = CoverWell::imageIn(*event->mimeData()); !cover.isNull()) {
      event->acceptProposedAction();
      setCoverOf(*entry, cover);
      return;
    }
  }
  QStringList paths;
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) paths << url.toLocalFile();
  if (paths.isEmpty()) return;
  event->acceptProposedAction();
  // Opening may show dialogs; leave the drag and drop machinery first.
  QTimer::singleShot(0, this, [this, paths] { importPaths(paths); });
}

void MainWindow::importPaths(const QStringList& paths) {
  importFiles(paths);
  reloadAll();
}

void MainWindow::showStatistics() {
  if (!statistics_) statistics_ = new StatisticsDialog(controller_, this);
  else statistics_->refresh();
  statistics_->show();
  statistics_->raise();
}

void MainWindow::showDuplicates() {
  if (!duplicates_) {
    duplicates_ = new DuplicatesDialog(controller_, *history_, this);
    connect(duplicates_, &DuplicatesDialog::merged, this, [this](qint64 uid) {
      reloadAll();
      if (Entry* kept = controller_.managedObjectContext().entryWithUID(uid)) selectEntries({kept});
    });
  } else {
    duplicates_->refresh();
  }
  duplicates_->show();
  duplicates_->raise();
}

void MainWindow::reloadAll() {
  collections_->reload();
  // An import selects the collection it made.
  collections_->selectCollection(controller_.collections().selectedCollection());
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
  // folio:playTrackNamed=NAME[&artist=ARTIST] (as showEntryPage hands it to the view): play the
  // file linked to that track. Names compare without regard to case.
  const auto& selected = controller_.entriesController().selectedObjects();
  if (selected.size() != 1) return;
  QString request = QUrl::fromPercentEncoding(url.toString(QUrl::FullyEncoded).section(QLatin1Char(':'), 1).toUtf8());
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
  // No link of the entry's own: the player's library has the file, as the link was made from it.
  const QString file = controller_.addPanel().trackData().libraryLocation(request, selected.front()->stringValue(CdKeys::title));
  if (!file.isEmpty()) {
    QDesktopServices::openUrl(QUrl(file));
    return;
  }
  windowSystem_.displayNotice(tr("No file is linked to “%1”.").arg(request),
                              controller_.preferencesStandard().floatForKey(SettingsKeys::bezelDisplayTime));
}

bool MainWindow::importFiles(const QStringList& paths) {
  bool changed = false;
  history_->record(tr("Import"), {}, [&] {
    // Several files: what was skipped is told once, at the end, not file by file.
    if (paths.size() > 1) windowSystem_.beginAlertBatch();
    for (const QString& path : paths) {
      windowSystem_.setAlertBatchSubject(QFileInfo(path).fileName());
      changed |= QFileInfo::exists(path) ? controller_.openFile(path) : controller_.handleIncomingString(path);
    }
    if (paths.size() > 1) windowSystem_.endAlertBatch();
  });
  return changed;
}

void MainWindow::openStrings(const QStringList& words) {
  // The files are one import, to undo as one; an entry added from a search is a step of its own.
  QStringList files, others;
  for (const QString& word : words) (QFileInfo::exists(word) || QUrl(word.trimmed()).isLocalFile() ? files : others) << word;
  bool changed = importFiles(files);
  for (const QString& word : others) changed |= controller_.handleIncomingString(word);
  if (changed) reloadAll();
  if (isMinimized()) showNormal();
  raise();
  activateWindow();
}

void MainWindow::fillColumnsMenu() {
  columnsMenu_->clear();
  qDeleteAll(columnsMenu_->findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
  // Some 45 fields: the album's own first, the rest in groups, each group by name.
  MyFieldsControllerShared& fields = *controller_.fieldsController();
  QMenu *dates = nullptr, *more = nullptr, *custom = nullptr;
  auto groupFor = [&](const QVariantMap& field) -> QMenu* {
    const QString identifier = field.value(MKIdentifier).toString();
    if (identifier.startsWith(QLatin1String("custom")))
      return custom ? custom : custom = new QMenu(tr("Custom Fields"), columnsMenu_);
    if (fields.fieldTypeForIdentifier(identifier) == FieldTypeDate)
      return dates ? dates : dates = new QMenu(tr("Dates"), columnsMenu_);
    if (field.value(QStringLiteral("location")).toString() == MKLocationExtra)
      return more ? more : more = new QMenu(tr("Loan, Purchase and More"), columnsMenu_);
    return columnsMenu_;
  };
  for (const QVariant& f : fields.columnFields()) {
    const QString identifier = f.toMap().value(MKIdentifier).toString();
    QAction* a = groupFor(f.toMap())->addAction(fields.localizedColumnName(identifier));
    a->setCheckable(true);
    a->setChecked(model_->columns().contains(identifier));
    connect(a, &QAction::toggled, this, [this, identifier](bool on) { showColumn(identifier, on); });
  }
  columnsMenu_->addSeparator();
  for (QMenu* group : {dates, more, custom})
    if (group) columnsMenu_->addMenu(group);
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
  showSortIndicator();
  saveState();
}

void MainWindow::showSortIndicator() {
  // The column of the sort key, wherever it now is; none when that column is hidden.
  const EntriesController& entries = controller_.entriesController();
  QString key = entries.sortKey();
  if (key == CdKeys::status && model_->columns().contains(StatusImage::key)) key = StatusImage::key;
  list_->horizontalHeader()->setSortIndicator(int(model_->columns().indexOf(key)),
                                              entries.sortAscending() ? Qt::AscendingOrder : Qt::DescendingOrder);
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
  const bool active = !field.isEmpty() && !wanted.isEmpty();
  filterButton_->setText(active ? tr("Filter: %1 is \u201C%2\u201D").arg(controller_.fieldsController()->localizedColumnName(field), wanted)
                                : tr("Filter"));
  clearFilter_->setVisible(active);
  if (!active) {
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
  const QString what = selected.size() == 1 ? tr("\u201C%1\u201D").arg(selected.front()->stringValue(CdKeys::title))
                                            : tr("%n entries", nullptr, int(selected.size()));
  Collection* shown = controller_.collections().selectedCollection();
  if (shown && shown->isUser()) {
    // In one of the user's collections the entries may only be meant to leave that collection.
    QMessageBox box(QMessageBox::Question, tr("Delete"),
                    tr("Remove %1 from \u201C%2\u201D, or delete from the catalogue?").arg(what, shown->name()),
                    QMessageBox::Cancel, this);
    box.setInformativeText(tr("Remove from Collection keeps the entries in the catalogue and in other collections. "
                              "Delete from Catalogue deletes them everywhere."));
    QPushButton* remove = box.addButton(tr("Remove from Collection"), QMessageBox::AcceptRole);
    QPushButton* erase = box.addButton(tr("Delete from Catalogue"), QMessageBox::DestructiveRole);
    box.setDefaultButton(remove);
    box.exec();
    if (box.clickedButton() == remove) {
      history_->record(tr("Remove from Collection"), {}, [&] {
        for (Entry* e : selected) controller_.managedObjectContext().removeEntryFromCollection(e, shown);
        controller_.saveManagedObjectContext();
      });
      collections_->reload();
      runSearch();
      return;
    }
    if (box.clickedButton() != erase) return;
  } else if (QMessageBox::question(this, tr("Delete"), tr("Delete %1 from the catalogue?").arg(what),
                                   QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel) != QMessageBox::Yes) {
    return;
  }
  // The covers are kept too, for the undo to put back.
  history_->record(
      tr("Delete"), selected,
      [&] {
        controller_.deleteEntries(selected);
        controller_.saveManagedObjectContext();
      },
      true);
  collections_->reload();
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
  collections_->reload();
  // The list, and the page, whose collections line has just grown.
  runSearch();
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

void MainWindow::exportShown() {
  Collection* shown = controller_.collections().selectedCollection();
  ExportDialog dialog(controller_, shown ? shown->name() : controller_.frameworkBundle().localizedString(QStringLiteral("All Entries")),
                      this);
  if (dialog.exec() != QDialog::Accepted) return;
  const std::vector<Entry*> entries = controller_.entriesController().arrangedObjects();
  QString error;
  if (!dialog.write(entries, &error)) {
    windowSystem_.runAlert(tr("Nothing was exported."), error, {});
    return;
  }
  tellWhere(dialog.output());
}

void MainWindow::tellWhere(const QString& path) {
  // Long enough to read a path, and selectable in the footer afterwards.
  const QString text = tr("Saved to %1").arg(QDir::toNativeSeparators(path));
  windowSystem_.displayNotice(text, std::max(4.0, controller_.preferencesStandard().floatForKey(SettingsKeys::bezelDisplayTime)));
  footer_->setText(text);
}

void MainWindow::showPreferences() {
  PreferencesDialog dialog(controller_, this);
  if (dialog.exec() != QDialog::Accepted) return;
  refreshList();
}
