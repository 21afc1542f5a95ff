<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>ButtonConfig</name>
    <message>
        <source>  组合键设置</source>
        <translation>  Key Combinations</translation>
    </message>
    <message>
        <source>  超级组合键设置</source>
        <translation>  Super Key Combinations</translation>
    </message>
    <message>
        <source>  按键属性设置</source>
        <translation>  Key Properties</translation>
    </message>
    <message>
        <source>CKey%1:</source>
        <translation>CKey%1:</translation>
    </message>
    <message>
        <source>单步增量</source>
        <translation>Step</translation>
    </message>
    <message>
        <source>单态</source>
        <translation>One-state</translation>
    </message>
    <message>
        <source>双态</source>
        <translation>Two-state</translation>
    </message>
    <message>
        <source>三态</source>
        <translation>Three-state</translation>
    </message>
</context>
<context>
    <name>CanFrame</name>
    <message>
        <source>标准ID</source>
        <translation>Standard ID</translation>
    </message>
    <message>
        <source>扩展ID</source>
        <translation>Extended ID</translation>
    </message>
    <message>
        <source>标准标识符</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>扩展标识符</source>
        <translation>Extended</translation>
    </message>
    <message>
        <source>数据帧</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>远程帧</source>
        <translation>Remote</translation>
    </message>
    <message>
        <source>标识符类型</source>
        <translation>ID Type</translation>
    </message>
    <message>
        <source>消息类型</source>
        <translation>Frame Type</translation>
    </message>
    <message>
        <source>数据长度</source>
        <translation>Length</translation>
    </message>
    <message>
        <source>数据解析</source>
        <translation>Data Mapping</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>帧 %1</source>
        <translation>Frame %1</translation>
    </message>
</context>
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
    <name>ComprehensiveConfig</name>
    <message>
        <source>  HID设置</source>
        <translation>  HID Setting</translation>
    </message>
    <message>
        <source>  油门保持</source>
        <translation>  Throttle Hold</translation>
    </message>
    <message>
        <source>  蜂鸣器设置</source>
        <translation>  Buzzer Setting</translation>
    </message>
    <message>
        <source>  波特率设置</source>
        <translation>  Baud Rate Setting</translation>
    </message>
    <message>
        <source>  SBUS设置</source>
        <translation>  SBUS Setting</translation>
    </message>
    <message>
        <source>  关于设备</source>
        <translation>  About Device</translation>
    </message>
    <message>
        <source>HID游戏手柄</source>
        <translation>HID Gamepad</translation>
    </message>
    <message>
        <source>HID通讯模式</source>
        <translation>HID Communication</translation>
    </message>
    <message>
        <source>HID输出 :</source>
        <translation>HID output :</translation>
    </message>
    <message>
        <source>控制开关 :</source>
        <translation>Control switch :</translation>
    </message>
    <message>
        <source>生效档位 :</source>
        <translation>Active position :</translation>
    </message>
    <message>
        <source>油门保持值 :</source>
        <translation>Hold value :</translation>
    </message>
    <message>
        <source>恢复速度(S) :</source>
        <translation>Recovery speed (s) :</translation>
    </message>
    <message>
        <source>保持速度(S) :</source>
        <translation>Hold speed (s) :</translation>
    </message>
    <message>
        <source>油门</source>
        <translation>Throttle</translation>
    </message>
    <message>
        <source>空闲报警 :</source>
        <translation>Idle warning :</translation>
    </message>
    <message>
        <source>低压报警 :</source>
        <translation>Low-voltage warning :</translation>
    </message>
    <message>
        <source>电池电压 :</source>
        <translation>Battery voltage :</translation>
    </message>
    <message>
        <source>波特率 :</source>
        <translation>Baud rate :</translation>
    </message>
    <message>
        <source>输出SBUS1</source>
        <translation>Output SBUS1</translation>
    </message>
    <message>
        <source>输出SBUS2</source>
        <translation>Output SBUS2</translation>
    </message>
    <message>
        <source>SBUS 输出 :</source>
        <translation>SBUS output :</translation>
    </message>
    <message>
        <source>SBUS1 优先级和协议 :</source>
        <translation>SBUS1 priority and protocol :</translation>
    </message>
    <message>
        <source>SBUS2 优先级和协议 :</source>
        <translation>SBUS2 priority and protocol :</translation>
    </message>
    <message>
        <source>外部SBUS1 输入</source>
        <translation>External SBUS1 input</translation>
    </message>
    <message>
        <source>外部SBUS2 输入</source>
        <translation>External SBUS2 input</translation>
    </message>
    <message>
        <source>外部Sbus输入 :</source>
        <translation>External SBUS input :</translation>
    </message>
    <message>
        <source>SBUS 控制开关 :</source>
        <translation>SBUS control switch :</translation>
    </message>
    <message>
        <source>开关档位 :</source>
        <translation>Switch position :</translation>
    </message>
    <message>
        <source>信号强度 :</source>
        <translation>Signal strength :</translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation>Search Devices</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>详细信息</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>波特率设置</source>
        <translation>Baud Rate</translation>
    </message>
    <message>
        <source>数据口所接设备须使用相同的波特率，确认修改吗？</source>
        <translation>The device on the data port must use the same baud rate. Change it?</translation>
    </message>
</context>
<context>
    <name>CustomConfig</name>
    <message>
        <source>  Pyx设置</source>
        <translation>  Pyx Setting</translation>
    </message>
    <message>
        <source>  CAN设置</source>
        <translation>  CAN Setting</translation>
    </message>
    <message>
        <source>  自定义串口设置</source>
        <translation>  Custom Serial Setting</translation>
    </message>
    <message>
        <source>输出模式 : </source>
        <translation>Output Mode : </translation>
    </message>
    <message>
        <source>注意：选择SBUS输出则无法与PyxM配合使用，CAN与自定义串口失能</source>
        <translation>Note: with SBUS output the PyxM cannot be used; CAN and the custom serial output are disabled</translation>
    </message>
    <message>
        <source>使能</source>
        <translation>Enable</translation>
    </message>
    <message>
        <source>波特率 : </source>
        <translation>Baud Rate : </translation>
    </message>
    <message>
        <source>发送频率 :</source>
        <translation>Frequency :</translation>
    </message>
    <message>
        <source>添加帧</source>
        <translation>Add Frame</translation>
    </message>
    <message>
        <source>刷新帧</source>
        <translation>Refresh Frames</translation>
    </message>
    <message>
        <source>小端</source>
        <translation>Little-endian</translation>
    </message>
    <message>
        <source>大端</source>
        <translation>Big-endian</translation>
    </message>
    <message>
        <source>和校验</source>
        <translation>Sum</translation>
    </message>
    <message>
        <source>异或校验</source>
        <translation>XOR</translation>
    </message>
    <message>
        <source>CRC16校验</source>
        <translation>CRC16</translation>
    </message>
    <message>
        <source>CRC32校验</source>
        <translation>CRC32</translation>
    </message>
    <message>
        <source>帧头</source>
        <translation>Head</translation>
    </message>
    <message>
        <source>帧尾</source>
        <translation>End</translation>
    </message>
    <message>
        <source>数据格式</source>
        <translation>Byte Order</translation>
    </message>
    <message>
        <source>通道数据范围 : </source>
        <translation>Channel Range : </translation>
    </message>
    <message>
        <source>校验模式</source>
        <translation>Checksum</translation>
    </message>
    <message>
        <source>注意: 切换硬件接口前,请确保当前接口线已断开连接!!!</source>
        <translation>Note: before switching the hardware interface, make sure the cable of the current interface is disconnected!!!</translation>
    </message>
</context>
<context>
    <name>DataWidget</name>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Return</translation>
    </message>
    <message>
        <source>数据 %1</source>
        <translation>Byte %1</translation>
    </message>
    <message>
        <source>线性</source>
        <translation>Linear</translation>
    </message>
    <message>
        <source>非线性</source>
        <translation>Nonlinear</translation>
    </message>
    <message>
        <source>线性设置</source>
        <translation>Linear Setting</translation>
    </message>
    <message>
        <source>数据下标</source>
        <translation>Byte Index</translation>
    </message>
    <message>
        <source>通道映射</source>
        <translation>Channel</translation>
    </message>
    <message>
        <source>非线性设置</source>
        <translation>Nonlinear Setting</translation>
    </message>
    <message>
        <source>数据解析 - %1</source>
        <translation>Data Mapping - %1</translation>
    </message>
    <message>
        <source>保存数据解析</source>
        <translation>Save Data Mapping</translation>
    </message>
    <message>
        <source>确认要保存数据解析吗！</source>
        <translation>Save the data mapping?</translation>
    </message>
</context>
<context>
    <name>EditTracker</name>
    <message>
        <source>有修改尚未写入遥控器</source>
        <translation>Has changes not yet written to the remote control unit</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>返回前要写入吗？</source>
        <translation>Write them before returning?</translation>
    </message>
    <message>
        <source>关闭前要写入吗？</source>
        <translation>Write them before closing?</translation>
    </message>
    <message>
        <source>遥控器已重新连接，页面将重建。要先写入吗？</source>
        <translation>The remote control unit is connected again and the pages will be rebuilt. Write them first?</translation>
    </message>
    <message>
        <source>以下页面有修改尚未写入遥控器：%1</source>
        <translation>These pages have changes not yet written to the remote control unit: %1</translation>
    </message>
    <message>
        <source>写入</source>
        <translation>Write</translation>
    </message>
    <message>
        <source>放弃修改</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>留下</source>
        <translation>Stay</translation>
    </message>
    <message>
        <source>未写入的修改</source>
        <translation>Unwritten Changes</translation>
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
    <name>LinkPlot</name>
    <message>
        <source>导出 CSV…</source>
        <translation>Export CSV…</translation>
    </message>
    <message>
        <source>保存图表…</source>
        <translation>Save plot…</translation>
    </message>
    <message>
        <source>绘制的数值</source>
        <translation>Plotted figure</translation>
    </message>
    <message>
        <source>时间范围</source>
        <translation>Time range</translation>
    </message>
    <message>
        <source>1 分钟</source>
        <translation>1 min</translation>
    </message>
    <message>
        <source>5 分钟</source>
        <translation>5 min</translation>
    </message>
    <message>
        <source>30 分钟</source>
        <translation>30 min</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>CSV 文件 (*.csv)</source>
        <translation>CSV files (*.csv)</translation>
    </message>
    <message>
        <source>PNG 图片 (*.png)</source>
        <translation>PNG images (*.png)</translation>
    </message>
    <message>
        <source>无法写入 %1</source>
        <translation>Cannot write %1</translation>
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
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;a href=&quot;&quot;&gt;&lt;span style=&quot; font-style:italic; text-decoration: underline; color:#0000ff;&quot;&gt;Welcome to the official website&lt;/span&gt;&lt;/a&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
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
    <name>RFParaConfig</name>
    <message>
        <source>模块IP :</source>
        <translation>Module IP:</translation>
    </message>
    <message>
        <source>连接/断开</source>
        <translation>Connect/Disconnect</translation>
    </message>
    <message>
        <source>打开/关闭设备</source>
        <translation>Modem On/Off</translation>
    </message>
    <message>
        <source>当前值 : [    ]</source>
        <translation>Current: [    ]</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>On</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>重启设备</source>
        <translation>Restart Module</translation>
    </message>
    <message>
        <source>频段设置</source>
        <translation>Band</translation>
    </message>
    <message>
        <source>秘钥设置（十六进制输入，即0~9，A~F或a~f，长度不超过64个字符，即32个字节。必须偶数）</source>
        <translation>Link Key (hex 0~9, A~F, a~f; even length, at most 64 characters = 32 bytes)</translation>
    </message>
    <message>
        <source>主从设置</source>
        <translation>Node Type</translation>
    </message>
    <message>
        <source>当前类型 : [    ]</source>
        <translation>Current type: [    ]</translation>
    </message>
    <message>
        <source>工作类型 : [    ]</source>
        <translation>Configured type: [    ]</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>中心节点</source>
        <translation>Centre node</translation>
    </message>
    <message>
        <source>接入节点</source>
        <translation>Access node</translation>
    </message>
    <message>
        <source>IP设置</source>
        <translation>IP Address</translation>
    </message>
    <message>
        <source>当前IP : [    ]</source>
        <translation>Current IP: [    ]</translation>
    </message>
    <message>
        <source>跳频设置</source>
        <translation>Frequency Hopping</translation>
    </message>
    <message>
        <source>（仅中心节点）</source>
        <translation> (centre only)</translation>
    </message>
    <message>
        <source>上下行设置</source>
        <translation>Down/Up-link Slots</translation>
    </message>
    <message>
        <source>最大发射功率设置</source>
        <translation>Max Transmit Power</translation>
    </message>
    <message>
        <source>（仅接入节点）</source>
        <translation> (access only)</translation>
    </message>
    <message>
        <source>建链组设置</source>
        <translation>Link Group</translation>
    </message>
    <message>
        <source>带宽设置 :</source>
        <translation>Bandwidth:</translation>
    </message>
    <message>
        <source>功率设置(- 40 ~ 40) :</source>
        <translation>Power (- 40 ~ 40):</translation>
    </message>
    <message>
        <source>频点设置(24015 ~ 24814, 8060 ~ 8259, 14279 ~ 14678) :</source>
        <translation>Frequency (24015 ~ 24814, 8060 ~ 8259, 14279 ~ 14678):</translation>
    </message>
    <message>
        <source>DSONSCAP设置</source>
        <translation>DSONSCAP</translation>
    </message>
    <message>
        <source>当前状态: [    ]</source>
        <translation>Current state: [    ]</translation>
    </message>
    <message>
        <source>不支持CA和MIMO</source>
        <translation>No CA, no MIMO</translation>
    </message>
    <message>
        <source>支持CA</source>
        <translation>CA</translation>
    </message>
    <message>
        <source>支持MIMO</source>
        <translation>MIMO</translation>
    </message>
    <message>
        <source>支持CA和MIMO</source>
        <translation>CA and MIMO</translation>
    </message>
    <message>
        <source>DRPR 上报日志</source>
        <translation>DRPR Report Log</translation>
    </message>
    <message>
        <source>打开日志窗口</source>
        <translation>Open a log window</translation>
    </message>
    <message>
        <source>AT指令调试接口</source>
        <translation>AT Command Console</translation>
    </message>
    <message>
        <source>AT指令 :</source>
        <translation>AT command:</translation>
    </message>
    <message>
        <source>发送</source>
        <translation>Send</translation>
    </message>
    <message>
        <source>连接失败</source>
        <translation>Connection Failed</translation>
    </message>
    <message>
        <source>无法访问主机</source>
        <translation>Cannot reach the host</translation>
    </message>
    <message>
        <source>更新</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>更新失败</source>
        <translation>Update failed</translation>
    </message>
    <message>
        <source>更新成功</source>
        <translation>Update succeeded</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>请选择一个选项!</source>
        <translation>Please select an option!</translation>
    </message>
    <message>
        <source>请选择一个频段!</source>
        <translation>Please select one band!</translation>
    </message>
    <message>
        <source>十六进制输入，即0~9，A~F或a~f，长度不超过64个字符，即32个字节。必须偶数</source>
        <translation>Hex 0~9, A~F, a~f; even length, at most 64 characters (32 bytes)</translation>
    </message>
    <message>
        <source>请输入完整的IP地址!</source>
        <translation>Please enter the complete IP address!</translation>
    </message>
    <message>
        <source>请输入AT指令!</source>
        <translation>Please enter an AT command!</translation>
    </message>
    <message>
        <source>当前值 : </source>
        <translation>Current: </translation>
    </message>
    <message>
        <source>当前类型 : </source>
        <translation>Current type: </translation>
    </message>
    <message>
        <source>工作类型 : </source>
        <translation>Configured type: </translation>
    </message>
    <message>
        <source>当前IP: </source>
        <translation>Current IP: </translation>
    </message>
    <message>
        <source>当前值(- 40 ~ 40) : </source>
        <translation>Current (- 40 ~ 40): </translation>
    </message>
    <message>
        <source>当前状态: </source>
        <translation>Current state: </translation>
    </message>
    <message>
        <source>全部刷新</source>
        <translation>Refresh all</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>依次刷新每一行</source>
        <translation>Refresh every row in turn</translation>
    </message>
    <message>
        <source>已发送的指令，双击放回输入框</source>
        <translation>Commands sent; double-click one to put it back in the input</translation>
    </message>
</context>
<context>
    <name>RFRadioConfig</name>
    <message>
        <source>电源控制 : </source>
        <translation>Power control : </translation>
    </message>
    <message>
        <source>电源物理开关控制 : </source>
        <translation>Physical power switch : </translation>
    </message>
    <message>
        <source>重置地面端模块 : </source>
        <translation>Reset ground module : </translation>
    </message>
    <message>
        <source>重置天空端模块 : </source>
        <translation>Reset air module : </translation>
    </message>
    <message>
        <source>模块参数配置 : </source>
        <translation>Module parameters : </translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>配置</source>
        <translation>Configure</translation>
    </message>
    <message>
        <source>地面端模组恢复出厂设置成功</source>
        <translation>Ground module restored to factory settings</translation>
    </message>
    <message>
        <source>地面端模组恢复出厂设置失败</source>
        <translation>Ground module factory reset failed</translation>
    </message>
    <message>
        <source>天空端模块恢复出厂设置成功</source>
        <translation>Air module restored to factory settings</translation>
    </message>
    <message>
        <source>天空端模块恢复出厂设置失败</source>
        <translation>Air module factory reset failed</translation>
    </message>
    <message>
        <source>重置图传模块</source>
        <translation>Reset radio module</translation>
    </message>
    <message>
        <source>确认要重置地面端模块吗！</source>
        <translation>Reset the ground module?</translation>
    </message>
    <message>
        <source>确认要重置天空端模块吗！</source>
        <translation>Reset the air module?</translation>
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
<context>
    <name>PortChooser</name>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>Connect</translation>
    </message>
    <message>
        <source>串口路径，例如 /dev/ttyUSB0</source>
        <translation>Serial port path, for example /dev/ttyUSB0</translation>
    </message>
    <message>
        <source>选择遥控器所在的串口，或输入它的路径</source>
        <translation>Choose the serial port of the remote control unit, or type its path</translation>
    </message>
    <message>
        <source>串口：</source>
        <translation>Serial port:</translation>
    </message>
</context>
<context>
    <name>PortProblem</name>
    <message>
        <source>未设置串口：请在下面选择遥控器的串口。</source>
        <translation>No serial port is set: choose the port of the remote control unit below.</translation>
    </message>
    <message>
        <source>%1：没有这个设备（未连接，或路径有误）。</source>
        <translation>%1: no such device (not plugged in, or a wrong path).</translation>
    </message>
    <message>
        <source>%1：没有权限打开。请把用户加入 dialout 组（sudo usermod -aG dialout $USER），然后重新登录。</source>
        <translation>%1: permission denied. Add your user to the dialout group (sudo usermod -aG dialout $USER), then log in again.</translation>
    </message>
    <message>
        <source>%1：正被另一个程序使用，请先关闭那个程序。</source>
        <translation>%1: busy, in use by another program. Close that program first.</translation>
    </message>
    <message>
        <source>%1：无法打开（%2）。</source>
        <translation>%1: cannot be opened (%2).</translation>
    </message>
    <message>
        <source>未设置串口</source>
        <translation>no port set</translation>
    </message>
    <message>
        <source>没有这个设备</source>
        <translation>no such device</translation>
    </message>
    <message>
        <source>没有权限</source>
        <translation>permission denied</translation>
    </message>
    <message>
        <source>被另一个程序占用</source>
        <translation>busy</translation>
    </message>
    <message>
        <source>无法打开</source>
        <translation>cannot open</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>端口：未设置</source>
        <translation>Port: none</translation>
    </message>
    <message>
        <source>端口：%1</source>
        <translation>Port: %1</translation>
    </message>
    <message>
        <source>Alder</source>
        <translation>Alder</translation>
    </message>
    <message>
        <source>Birch</source>
        <translation>Birch</translation>
    </message>
    <message>
        <source>Cedar</source>
        <translation>Cedar</translation>
    </message>
    <message>
        <source>Larch</source>
        <translation>Larch</translation>
    </message>
    <message>
        <source>Maple</source>
        <translation>Maple</translation>
    </message>
    <message>
        <source>Rowan</source>
        <translation>Rowan</translation>
    </message>
    <message>
        <source>Willow</source>
        <translation>Willow</translation>
    </message>
    <message>
        <source>无无线模块</source>
        <translation>no radio module</translation>
    </message>
    <message>
        <source>无线模块</source>
        <translation>radio module</translation>
    </message>
    <message>
        <source>输出模块</source>
        <translation>output module</translation>
    </message>
    <message>
        <source>%1，%2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>未连接</source>
        <translation>Not connected</translation>
    </message>
    <message>
        <source>未连接：%1</source>
        <translation>Not connected: %1</translation>
    </message>
    <message>
        <source>连接中…</source>
        <translation>Connecting…</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>Connected</translation>
    </message>
    <message>
        <source>连接已断开</source>
        <translation>Connection lost</translation>
    </message>
    <message>
        <source>正在重新连接…</source>
        <translation>Reconnecting…</translation>
    </message>
    <message>
        <source>SBUS 1</source>
        <translation>SBUS 1</translation>
    </message>
    <message>
        <source>SBUS 2</source>
        <translation>SBUS 2</translation>
    </message>
    <message>
        <source>通道保持</source>
        <translation>channel hold</translation>
    </message>
    <message>
        <source>按钮设置</source>
        <translation>buttons</translation>
    </message>
    <message>
        <source>综合设置</source>
        <translation>comprehensive settings</translation>
    </message>
    <message>
        <source>图传设置</source>
        <translation>radio module</translation>
    </message>
    <message>
        <source>自定义设置</source>
        <translation>custom output</translation>
    </message>
    <message>
        <source>读取%1 — 1 个应答</source>
        <translation>Read %1 — 1 answer</translation>
    </message>
    <message>
        <source>读取%1 — %2 个应答</source>
        <translation>Read %1 — %2 answers</translation>
    </message>
    <message>
        <source>已恢复出厂设置，重新读取%1 — %2 个应答</source>
        <translation>Factory reset, read %1 again — %2 answers</translation>
    </message>
    <message>
        <source>已写入%1</source>
        <translation>Wrote %1</translation>
    </message>
    <message>
        <source>未写入%1：页面给出的参数个数不对</source>
        <translation>Nothing written for %1: the page gave a wrong number of values</translation>
    </message>
    <message>
        <source>设备拒绝：%1</source>
        <translation>Unit refused: %1</translation>
    </message>
    <message>
        <source>全部写入：第 %1 帧，共 %2 帧…</source>
        <translation>Write-all: %1 of %2 frames…</translation>
    </message>
    <message>
        <source>全部写入中断：%1 帧（共 %2 帧）后端口已关闭</source>
        <translation>Write-all broken off: the port closed after %1 of %2 frames</translation>
    </message>
    <message>
        <source>全部写入完成：%1 帧，其中 %2 帧被设备拒绝</source>
        <translation>Write-all done: %1 frames, %2 refused by the unit</translation>
    </message>
    <message>
        <source>全部写入完成：%1 帧</source>
        <translation>Write-all done: %1 frames</translation>
    </message>
    <message>
        <source>已加载 %1，到第 %2 行为止（此后文件已损坏）</source>
        <translation>Loaded %1 up to line %2 (damaged from there)</translation>
    </message>
    <message>
        <source>已加载 %1：%2 组</source>
        <translation>Loaded %1: %2 groups</translation>
    </message>
    <message>
        <source>无法打开 %1</source>
        <translation>Could not open %1</translation>
    </message>
    <message>
        <source>已保存 %1</source>
        <translation>Saved %1</translation>
    </message>
    <message>
        <source>无法保存 %1</source>
        <translation>Could not save %1</translation>
    </message>
    <message>
        <source>已备份：%1</source>
        <translation>Backup saved: %1</translation>
    </message>
    <message>
        <source>备份失败：%1</source>
        <translation>Backup failed: %1</translation>
    </message>
</context>
</TS>
