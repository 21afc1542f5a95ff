<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>ChannelListenInterface</name>
    <message>
        <source>SBUS1设置</source>
        <translation>SBUS1 Setting</translation>
    </message>
    <message>
        <source>SBUS2设置</source>
        <translation>SBUS2 Setting</translation>
    </message>
    <message>
        <source>通道保持</source>
        <translation>Channel Hold</translation>
    </message>
    <message>
        <source>按钮设置</source>
        <translation>Button Setting</translation>
    </message>
    <message>
        <source>综合设置</source>
        <translation>Comprehensive</translation>
    </message>
    <message>
        <source>图传设置</source>
        <translation>RF Radio</translation>
    </message>
    <message>
        <source>自定义设置</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>返 回</source>
        <translation>Return</translation>
    </message>
    <message>
        <source>写入数据</source>
        <translation>Write Data</translation>
    </message>
    <message>
        <source>读取数据</source>
        <translation>Read Data</translation>
    </message>
    <message>
        <source>保存配置</source>
        <translation>Save Config</translation>
    </message>
    <message>
        <source>加载配置</source>
        <translation>Load Config</translation>
    </message>
    <message>
        <source>恢复出厂设置</source>
        <translation>Factory Reset</translation>
    </message>
</context>
<context>
    <name>HelpWidget</name>
    <message>
        <source>Help Guide</source>
        <translation>Help Guide</translation>
    </message>
    <message>
        <source>通道配置</source>
        <translation>Channel Configuration</translation>
    </message>
    <message>
        <source>SBUS设置</source>
        <translation>SBUS Setting</translation>
    </message>
    <message>
        <source>通道保持</source>
        <translation>Channel Hold</translation>
    </message>
    <message>
        <source>按键设置</source>
        <translation>Key Setting</translation>
    </message>
    <message>
        <source>综合设置</source>
        <translation>Comprehensive Setting</translation>
    </message>
    <message>
        <source>图传设置</source>
        <translation>RF Radio Setting</translation>
    </message>
    <message>
        <source>自定义设置</source>
        <translation>Custom Setting</translation>
    </message>
    <message>
        <source>版权信息</source>
        <translation>Copyright</translation>
    </message>
    <message>
        <source>帮助说明</source>
        <translation>Help</translation>
    </message>
</context>
<context>
    <name>MDlg</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Remote control unit is connecting...</source>
        <translation>Remote control unit is connecting...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;a href=&quot;&quot;&gt;&lt;span style=&quot; font-style:italic; text-decoration: underline; color:#0000ff;&quot;&gt;Welcome to the official website&lt;/span&gt;&lt;/a&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;a href=""&gt;&lt;span style=" font-style:italic; text-decoration: underline; color:#0000ff;"&gt;Welcome to the official website&lt;/span&gt;&lt;/a&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>写入数据</source>
        <translation>Write Data</translation>
    </message>
    <message>
        <source>确认要写入数据吗!</source>
        <translation>Write the data to the remote control unit?</translation>
    </message>
    <message>
        <source>正在写入中...</source>
        <translation>Writing...</translation>
    </message>
    <message>
        <source>写入中...</source>
        <translation>Writing...</translation>
    </message>
    <message>
        <source>恢复出厂设置</source>
        <translation>Factory Reset</translation>
    </message>
    <message>
        <source>确认要恢复出厂设置吗！</source>
        <translation>Restore the factory settings of the remote control unit?</translation>
    </message>
    <message>
        <source>写入配置文件</source>
        <translation>Write Config File</translation>
    </message>
    <message>
        <source>确认要写入配置文件参数吗！</source>
        <translation>Write the parameters of the config file to the remote control unit?</translation>
    </message>
</context>
<context>
    <name>SbusConfig</name>
    <message>
        <source>舵机相位</source>
        <translation>Servo Phase</translation>
    </message>
    <message>
        <source>中点微调</source>
        <translation>Center Trim</translation>
    </message>
    <message>
        <source>舵机行程量</source>
        <translation>Servo Travel</translation>
    </message>
    <message>
        <source>失控保护</source>
        <translation>Failsafe</translation>
    </message>
    <message>
        <source> To :</source>
        <translation> To :</translation>
    </message>
</context>
<context>
    <name>SbusHold</name>
    <message>
        <source>控制开关：</source>
        <translation>Control Switch:</translation>
    </message>
    <message>
        <source>保持档位：</source>
        <translation>Hold Position:</translation>
    </message>
</context>
<context>
    <name>ModelInterface</name>
    <message>
        <source>遥杆校准</source>
        <translation>Stick Calibration</translation>
    </message>
    <message>
        <source>通道配置</source>
        <translation>Channel Config</translation>
    </message>
    <message>
        <source>完成校准</source>
        <translation>Finish Calibration</translation>
    </message>
</context>
<context>
    <name>PhaseSwitch</name>
    <message>
        <source>正</source>
        <translation>Norm</translation>
    </message>
    <message>
        <source>负</source>
        <translation>Rev</translation>
    </message>
</context>
<context>
    <name>canReceive</name>
    <message>
        <source>接收计数 :</source>
        <translation>Received :</translation>
    </message>
    <message>
        <source>标识符类型</source>
        <translation>ID Type</translation>
    </message>
    <message>
        <source>标准ID</source>
        <translation>Standard ID</translation>
    </message>
    <message>
        <source>扩展ID</source>
        <translation>Extended ID</translation>
    </message>
    <message>
        <source>数据类型</source>
        <translation>Frame Type</translation>
    </message>
</context>
</TS>
