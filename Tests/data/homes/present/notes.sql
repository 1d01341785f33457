PRAGMA page_size=8192;
PRAGMA auto_vacuum=INCREMENTAL;
PRAGMA journal_mode=WAL;
CREATE TABLE note(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  text TEXT NOT NULL,
  modified INTEGER NOT NULL);
CREATE INDEX note_modified ON note(modified);
PRAGMA user_version=1;
INSERT INTO note VALUES(4, 'Shopping' || char(10) || 'milk', 1700000000000);
