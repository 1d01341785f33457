PRAGMA page_size=4096;
PRAGMA auto_vacuum=INCREMENTAL;
PRAGMA journal_mode=WAL;
CREATE TABLE entry(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  kind TEXT NOT NULL,
  preview TEXT NOT NULL,
  text_bytes INTEGER NOT NULL,
  file_path TEXT, image_blob_path TEXT, thumbnail_path TEXT,
  byte_size INTEGER, width INTEGER, height INTEGER,
  source_app_name TEXT, source_app_bundle_id TEXT, source_app_icon_path TEXT,
  copied_at INTEGER NOT NULL,
  pinned INTEGER NOT NULL DEFAULT 0);
CREATE INDEX entry_pinned ON entry(pinned, id);
CREATE TABLE part(
  entry INTEGER NOT NULL, number INTEGER NOT NULL, bytes BLOB NOT NULL,
  PRIMARY KEY(entry, number));
PRAGMA user_version=1;
INSERT INTO entry(id, kind, preview, text_bytes, source_app_name, copied_at, pinned)
  VALUES(3, 'text', 'kept for years', 14, 'Text Editor', 1700000000000, 1);
INSERT INTO entry(id, kind, preview, text_bytes, file_path, byte_size, copied_at)
  VALUES(7, 'file', 'report.pdf', 10, '/home/anna/report.pdf', 348211, 1700000100000);
INSERT INTO entry(id, kind, preview, text_bytes, copied_at)
  VALUES(8, 'text', 'a long text that begins', 44, 1700000200000);
INSERT INTO part VALUES(8, 0, CAST('a long text that begins ' AS BLOB)), (8, 1, CAST('here, and ends there' AS BLOB));
INSERT INTO entry(id, kind, preview, text_bytes, source_app_name, source_app_bundle_id, copied_at)
  VALUES(9, 'text', 'newest of the old', 17, 'Web Browser', 'browser', 1700000300000);
