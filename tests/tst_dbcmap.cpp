#include "testmain.h"
class T : public QObject { Q_OBJECT };
NORDA_TEST_MAIN(T)
#include "tst_dbcmap.moc"
