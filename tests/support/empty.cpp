// Keeps the support library non-empty before any fixture exists.
