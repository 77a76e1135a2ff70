# Connects to the emulator, which takes its time to open the socket.
python
import time

for _ in range(100):
    try:
        gdb.execute("target remote ./socket")
        break
    except gdb.error:
        time.sleep(0.1)
end
