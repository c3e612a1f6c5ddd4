#pragma once

#include "AddPanel.h"
#include "AutofillLists.h"
#include "CollectionsController.h"
#include "EntriesController.h"
#include "EntryTemplate.h"
#include "PluginManager.h"
#include "Store.h"
#include "StringTable.h"

#include <QStringList>
#include <QVariantMap>
#include <memory>
#include <optional>

class Entry;
class EntryPageFiller;
class Link;
class NewLinkHandler;
class TotalsProvider;
class QImage;
class MyFieldsControllerShared;
class Platform;
class PrintController;
class Settings;
class WindowSystem;

// The application controller of the framework: owns the store, the panels, the plug-in manager
// and the field catalogue, offers the services the product calls, and declares the hooks the
// product overrides (each with a neutral default here). The entry page, the totals and new links
// are finished by ports the product plugs in; without one, the framework's neutral answer stands.
class MyControllerShared {
 public:
  MyControllerShared(Settings& settings, WindowSystem& windowSystem, Platform& platform);
  virtual ~MyControllerShared();
  MyControllerShared(const MyControllerShared&) = delete;
  MyControllerShared& operator=(const MyControllerShared&) = delete;

  // Launch hooks; an override calls the inherited one after its own work.
  virtual void applicationWillFinishLaunching();
  virtual void applicationDidFinishLaunching();

  // Opens the catalogue (created when missing); its folder becomes the data folder.
  // Opened on demand (a command on one entry), the entries are not arranged until read.
  Store::OpenResult openCatalogue(const QString& path, Store::Loading loading = Store::Loading::AllEntries);
  static QString defaultCataloguePath();

  // Hooks of the search field, the autofill lists and collection naming.
  virtual QString labelForSearchType(const QVariant& searchType) const;
  virtual QString searchIdentifierForSearchType(int searchType) const;
  virtual void addValuesToAutofillForEntry(Entry& entry);
  virtual QStringList commonAttributesForNamingNewCollection() const { return {}; }
  // Feeds the suggestion lists from the entry: every field whose editor offers the values
  // already used, then the product's own fields (addValuesToAutofillForEntry).
  void addEntryToAutofill(Entry& entry);

  // Renders an entry through a template, in place: page view (html and webView), HTML export
  // (html only), plain text (neither). The entry's own fields first, then the entry page filler.
  void replaceKeysInTemplate(QString& text, Entry& entry, bool html, bool webView);
  // The same with the options given. Safe on several threads at once for entries whose tracks
  // and links are loaded, when not for the page view (the player's library is asked then).
  void fillTemplate(QString& text, Entry& entry, const EntryTemplate::Options& options, bool webView) const;

  // Finishes a link just added to an entry through the new link handler; without one the link
  // stays as it is.
  void processNewLink(Link& link);

  // The footer: the totals of the entries as formatted texts (with footer, only those the footer
  // shows), and the footer line rebuilt whenever the list or the selection changes. Without a
  // totals provider there are no totals and the line is empty.
  QVariantMap collectionTotalsDictionaryFor(const std::vector<Entry*>& entries, bool footer);
  void refreshCollectionStatistics();

  // The ports the product plugs in, kept by reference; null unplugs.
  void setEntryPageFiller(EntryPageFiller* filler) { entryPageFiller_ = filler; }
  void setTotalsProvider(TotalsProvider* provider) { totalsProvider_ = provider; }
  void setNewLinkHandler(NewLinkHandler* handler) { newLinkHandler_ = handler; }
  // Shows the number of selected entries beside the footer line.
  void setNumberOfSelectedInFooter();

  // The Print menu action.
  virtual void printCollection();

  // A site found several results: the user chooses one of its titles, which is fetched into the
  // add panel, the panel's previous and next buttons then stepping through the others.
  virtual void resultsFoundWithSite(SitePlugin& site, int numberOfResults);
  // Shows the site's result at the index in the add panel.
  void showResultOfSite(SitePlugin& site, int index);
  // The add panel's menu of site plug-ins; the desktop front end rebuilds it from the registry.
  virtual void getPluginsInfo(const QString& menuItem) { Q_UNUSED(menuItem); }

  // Services.
  static int osVersion(const Platform& platform);
  qint64 nextUID() { return store_.nextUID(); }
  bool saveManagedObjectContext();
  void addEntry(Entry* entry, Collection* collection);
  void selectEntry(Entry* entry);
  // Redraws the list and the shown entry after the catalogue changed behind the window's back.
  void refreshInformation();
  // A file or folder handed to the application; the product's dispatcher decides. False when
  // nothing took it.
  virtual bool openFile(const QString& path) {
    Q_UNUSED(path);
    return false;
  }
  // A URL or text handed to the application (another launch, the desktop, a link). This base
  // takes files and the program's own "discary:" URLs: discary://entry/UID selects an entry,
  // discary://search/TEXT searches. An override calls it first.
  virtual bool handleIncomingString(const QString& text);
  Entry* entryWithLink(const QString& url) { return store_.entryWithLink(url); }
  bool importDuplicates() const;
  // Writes the picture (a QImage or a Picture) as the entry's cover, "Covers/<uid>.jpg" in the
  // data folder; false when it is no picture or cannot be written.
  bool setCoverImage(Entry& entry, const QVariant& picture);
  void showAddPanel() { addPanel_.setVisible(true); }
  void clearAddPanel() { addPanel_.clear(); }
  void closeAddPanel() { addPanel_.setVisible(false); }
  // A new entry from the add panel's values and tracks. With the duplicate check, an entry of
  // the same title and artist makes the user confirm; nullptr when they decline.
  Entry* addEntryFromAddPanelCheckForDuplicates(bool checkForDuplicates);
  // Shows the entries of the selected collection that match the search, in list order.
  void search(const QString& text, int searchType);
  // Deletes the entries, from the store and from view.
  void deleteEntries(const std::vector<Entry*>& entries);
  // Takes in what other processes saved to the catalogue since the last look (Store::refresh):
  // entries they deleted leave the list and the selection, a collection they deleted is no
  // longer the shown one.
  Store::OutsideChanges mergeOutsideChanges();
  QString proposedNameForNewCollection(const std::vector<Entry*>& entries) const;
  // The shared print panel, made on first use; printInstance() is null until then.
  PrintController& sharedPrint();

  // State.
  Store& managedObjectContext() { return store_; }
  Settings& preferencesStandard() const { return settings_; }
  MyFieldsControllerShared* fieldsController() const { return fieldsController_.get(); }
  PluginManager& pluginManager() { return pluginManager_; }
  AddPanel& addPanel() { return addPanel_; }
  EntriesController& entriesController() { return entriesController_; }
  CollectionsController& collections() { return collections_; }
  AutofillLists& comboBoxData() { return comboBoxData_; }
  const StringTable& frameworkBundle() const { return strings_; }
  StringTable& frameworkBundle() { return strings_; }
  WindowSystem& windowSystem() const { return windowSystem_; }
  PrintController* printInstance() const { return print_.get(); }
  Platform& platform() const { return platform_; }
  QString dataFolderPath() const;
  // The text of the template of that name: the user's own, <data folder>/Templates/<name>, else
  // the built-in :/templates/<name>. Null when the name is not a plain file name or neither
  // exists; a user template that cannot be read is logged and the built-in one used.
  QString templateText(const QString& name) const;
  // What "[coverImage]" gives for the entry: empty without a cover; else the prefix set here
  // followed by "<uid>.jpg", or with no prefix the file URL of the cover in the data folder.
  QString coverImageAddress(const Entry& entry) const;
  // How the entry's own fields print in a template, with the user's release date format.
  EntryTemplate::Options entryTemplateOptions(const Entry& entry, bool html) const;
  // The same for any entry: no cover address.
  EntryTemplate::Options templateOptions(bool html) const;
  void setCoverImageAddressPrefix(const QString& prefix) { coverImageAddressPrefix_ = prefix; }
  const QString& coverImageAddressPrefix() const { return coverImageAddressPrefix_; }
  QList<bool> bottomFields() const;
  QString windowFooterString;
  bool multipleSelection = false;

 protected:
  void setFieldsController(std::unique_ptr<MyFieldsControllerShared> fields);
  QString localized(const QString& key, const QString& value = {}) const { return strings_.localizedString(key, value); }

 private:
  Settings& settings_;
  WindowSystem& windowSystem_;
  Platform& platform_;
  StringTable strings_;
  Store store_;
  CollectionsController collections_;
  EntriesController entriesController_;
  PluginManager pluginManager_;
  AddPanel addPanel_;
  AutofillLists comboBoxData_;
  std::unique_ptr<MyFieldsControllerShared> fieldsController_;
  std::optional<QStringList> autofilledFields_;  // asked of the field catalogue once
  QString coverImageAddressPrefix_;
  std::unique_ptr<PrintController> print_;
  QHash<qint64, size_t> coverHashes_;  // what each cover written by this process holds
  EntryPageFiller* entryPageFiller_ = nullptr;
  TotalsProvider* totalsProvider_ = nullptr;
  NewLinkHandler* newLinkHandler_ = nullptr;
};
