// Removed with the first real source of this folder.
