-- The file remembers which set of views, triggers and procedures it has. Programs that know no sets would put back older ones; they are kept out.
ALTER TABLE _Version ADD COLUMN Objects_Set int NOT NULL DEFAULT 0;
