mod debian/rmon.ini
